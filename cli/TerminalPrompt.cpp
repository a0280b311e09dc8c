#include "cli/TerminalPrompt.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace cli {

namespace {

class Terminal
{
public:
    Terminal()
        : m_descriptor(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))
    {
    }
    ~Terminal()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    int descriptor() const { return m_descriptor; }
    void write(const QByteArray& bytes) const
    {
        [[maybe_unused]] const auto written = ::write(m_descriptor, bytes.constData(), bytes.size());
    }

private:
    int m_descriptor;
};

/// Typing shows nothing while it lives.
class EchoOff
{
public:
    explicit EchoOff(int descriptor)
        : m_descriptor(descriptor)
        , m_isOff(::tcgetattr(descriptor, &m_before) == 0)
    {
        termios silent = m_before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHOE | ECHOK | ECHONL);
        m_isOff = m_isOff && ::tcsetattr(descriptor, TCSAFLUSH, &silent) == 0;
    }
    ~EchoOff()
    {
        if (m_isOff)
            ::tcsetattr(m_descriptor, TCSAFLUSH, &m_before);
    }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

    bool isOff() const { return m_isOff; }

private:
    int m_descriptor;
    termios m_before = {};
    bool m_isOff;
};

} // namespace

InputLine promptForSecret(const QString& prompt, int interruptDescriptor)
{
    const Terminal terminal;
    const EchoOff echoOff(terminal.descriptor());
    if (!echoOff.isOff())
        return {InputLine::Kind::NoTerminal, {}};
    terminal.write(prompt.toUtf8());
    const InputLine line = readLine(terminal.descriptor(), interruptDescriptor);
    // The line end that was typed is not shown either.
    terminal.write("\n");
    return line;
}

} // namespace cli
