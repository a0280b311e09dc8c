#pragma once

#include "tests/kit/PrivateHome.h"

#include <QProcess>
#include <QString>

namespace tests {

/// A screen with a window manager, for this process alone: Xvfb and openbox, from construction to destruction. They end
/// with the process, however it ends. To be made before the application object.
class Desktop
{
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Why there is no desktop; empty when there is one. The environment names it then.
    QString error() const { return m_error; }

private:
    bool startScreen();
    bool startWindowManager();

    const PrivateHome m_home;
    QProcess m_screen;
    QProcess m_windowManager;
    QString m_error;
};

} // namespace tests
