#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tests {

/// A session bus for this process and those that it starts, from construction to destruction, and on it, from start()
/// on, the keyring of a desktop: gnome-keyring, whose files lie in the home of the test. Both end with the process,
/// however it ends. The environment names the bus. One for a process, whose event loop does not run any more
/// afterwards: GLib ends a program whose session bus goes.
class DesktopKeyring
{
public:
    DesktopKeyring();
    ~DesktopKeyring();
    DesktopKeyring(const DesktopKeyring&) = delete;
    DesktopKeyring& operator=(const DesktopKeyring&) = delete;

    /// An unlocked keyring. False where that cannot be had; the reason stands on standard error.
    bool start();
    /// Nobody is there to unlock it again: whoever wants to is refused.
    bool lock() const;
    ///@{
    /// Lets it think for as long as the test wants: whoever asks waits.
    void hold() const;
    void release() const;
    ///@}
    /// Ends it.
    void stop();
    /// How many have joined the bus.
    qsizetype callers() const;

    /// The text that an application keeps; empty for none. For an unlocked keyring.
    static QByteArray textOf(const QString& application);
    /// What in that text is worth stealing: a session's value or a token. Empty for none.
    static QByteArray secretOf(const QString& application);
    /// Whether it has one, locked or not.
    static bool hasTextOf(const QString& application);

private:
    bool startBus();

    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_daemon;
};

} // namespace tests
