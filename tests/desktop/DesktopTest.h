#pragma once

#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "tests/desktop/User.h"
#include "tests/kit/JiraTest.h"

namespace tests {

/// A user in front of a screen, with a window of the host on it, and a server.
class DesktopTest : public JiraTest
{
protected:
    DesktopTest();
    ~DesktopTest() override;

    /// The host takes what is typed: no window of ours locks it.
    void expectFreeHost();
    /// Asks for the end of a window, more than once where it takes that, and expects that it goes.
    void closeAndExpectFreeHost(const std::shared_ptr<tljira::Window>& window);

    /// A picture of the screen, with the name of the test.
    static void picture(const QString& what);

    /// Shows the host and waits until it is in front.
    void showHost();

    User user;
    QWidget host;
    QLineEdit hostField;

private:
    void clickCloseUntil(const tljira::Window& window, const std::function<bool()>& hasEnded);
};

} // namespace tests
