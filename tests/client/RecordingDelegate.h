#pragma once

#include "client/JAControllerDelegate.h"

#include <string>
#include <vector>

namespace tests {

/// Notes what it hears as "valid" and "invalid".
class RecordingDelegate : public JAControllerDelegate
{
public:
    explicit RecordingDelegate(std::vector<std::string>& events)
        : m_events(events)
    {
    }

    void jaValidSession() override { m_events.push_back("valid"); }
    void jaInvalidSession() override { m_events.push_back("invalid"); }
    void jaControlleLoginCompletion(bool, const std::optional<tljira::Error>&) override
    {
        m_events.push_back("login completion");
    }
    void jaControlleLogoutCompletion(bool, const std::optional<tljira::Error>&) override
    {
        m_events.push_back("logout completion");
    }

private:
    std::vector<std::string>& m_events;
};

} // namespace tests
