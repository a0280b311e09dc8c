#pragma once

#include "platform/console/Input.h"

#include <QByteArray>

#include <memory>

namespace tljira::console {

/// The terminal that the user sits at, whatever the standard streams are.
class Terminal
{
public:
    /// Typing shows nothing while it lives; afterwards the terminal is as before.
    class HiddenTyping
    {
    public:
        virtual ~HiddenTyping() = default;
    };

    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Null when there is no terminal, or none that can hide what is typed.
    std::unique_ptr<HiddenTyping> hideTyping() const;

    /// As far as it takes it.
    void write(const QByteArray& bytes) const;
    Input input() const { return Input(m_descriptor); }

private:
    const int m_descriptor;
};

} // namespace tljira::console
