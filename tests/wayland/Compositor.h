#pragma once

#include "tests/kit/PrivateHome.h"

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tests {

/// A Wayland compositor without a screen, for this process alone: sway, from construction to destruction. It ends with
/// the process, however that ends. To be made before the application object.
class Compositor
{
public:
    Compositor();
    ~Compositor();
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    static constexpr int width = 1280;
    static constexpr int height = 1024;

    /// Why there is none; empty when there is one. The environment names it then.
    QString error() const { return m_error; }

private:
    bool start();
    bool waitForSockets();
    QString socket(const QString& pattern) const;

    /// In the folder that all users may enter: the compositor runs as another one.
    QTemporaryDir m_folder;
    const PrivateHome m_home;
    QProcess m_sway;
    QString m_error;
};

} // namespace tests
