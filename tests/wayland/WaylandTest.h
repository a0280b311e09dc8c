#pragma once

#include "tests/kit/JiraTest.h"
#include "tests/states/Scene.h"
#include "tests/wayland/SwayTree.h"
#include "tests/wayland/WaylandHands.h"

#include <QLineEdit>

namespace tests {

/// A user in front of a compositor, with a window of the host on its screen, and a server.
class WaylandTest : public JiraTest
{
protected:
    WaylandTest();

    /// The compositor's own view of the window of the scene.
    SwayWindow seen() const { return swayWindow(scene.window()->title()); }

    /// On screen, with the keyboard on something that is seen.
    void expectInFront();
    /// The host takes what is typed.
    void expectFreeHost();
    /// Asks for the end of the window as its title bar or the dock would.
    void closeAndExpectFreeHost();

    /// What the screen shows, as a file with the name of the test.
    static void picture(const QString& what);

    QWidget host;
    QLineEdit hostField{&host};
    WaylandHands hands;
    Scene scene{hands, server, [this] { logIn(); }};
};

} // namespace tests
