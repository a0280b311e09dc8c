#pragma once

#include <QProcessEnvironment>
#include <QStringList>

#include <sys/types.h>

namespace tests {

/// One run of the built tool on a pseudo terminal of its own, which is all its streams.
class TerminalRun
{
public:
    TerminalRun(const QStringList& arguments, const QProcessEnvironment& environment, const QString& folder,
                unsigned short columns = 80);
    ~TerminalRun();
    TerminalRun(const TerminalRun&) = delete;
    TerminalRun& operator=(const TerminalRun&) = delete;

    /// As from the keyboard.
    void type(const QByteArray& bytes) const;
    bool echoes() const;

    /// What the terminal has shown so far.
    const QByteArray& shown();
    /// Waits until the terminal shows `text`.
    bool waitFor(const QByteArray& text);
    /// Waits for the end; 1000 and the signal's number when a signal ended it, -1 when it does not end.
    int status();

private:
    void takeWhatIsShown();

    pid_t m_process = -1;
    int m_terminal = -1;
    /// The side of the tool, held open so that its settings can be read when the tool is gone.
    int m_toolSide = -1;
    QByteArray m_shown;
};

} // namespace tests
