#pragma once

#include "tests/desktop/User.h"
#include "tests/states/Hands.h"

namespace tests {

/// The keyboard of the screen.
class DesktopHands : public Hands
{
public:
    explicit DesktopHands(User& user)
        : m_user(user)
    {
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) override;
    void write(const QString& text) override { m_user.write(text); }

private:
    User& m_user;
};

} // namespace tests
