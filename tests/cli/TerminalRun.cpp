#include "tests/cli/TerminalRun.h"

#include "tests/cli/ToolRun.h"
#include "tests/kit/WaitUntil.h"

#include <QFile>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>
#include <vector>

namespace tests {

namespace {

/// Bytes of texts, and the null-terminated pointers to them that exec takes.
class Words
{
public:
    explicit Words(const QStringList& texts)
    {
        for (const QString& text : texts)
            m_bytes.push_back(QFile::encodeName(text));
        for (QByteArray& bytes : m_bytes)
            m_pointers.push_back(bytes.data());
        m_pointers.push_back(nullptr);
    }
    char** data() { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_bytes;
    std::vector<char*> m_pointers;
};

} // namespace

TerminalRun::TerminalRun(const QStringList& arguments, const QProcessEnvironment& environment, const QString& folder,
                         unsigned short columns)
{
    Words words(QStringList{toolPath()} + arguments);
    Words variables(environment.toStringList());
    const QByteArray path = QFile::encodeName(toolPath());
    const QByteArray start = QFile::encodeName(folder);
    const winsize size = {24, columns, 0, 0};
    if (::openpty(&m_terminal, &m_toolSide, nullptr, nullptr, &size) != 0)
        return;
    ::fcntl(m_terminal, F_SETFL, O_NONBLOCK);
    ::fcntl(m_terminal, F_SETFD, FD_CLOEXEC);
    m_process = ::fork();
    if (m_process == 0) {
        // Whoever runs the tests in the background ignores the signal; a terminal's user does not.
        std::signal(SIGINT, SIG_DFL);
        if (::login_tty(m_toolSide) == 0 && ::chdir(start.constData()) == 0)
            ::execve(path.constData(), words.data(), variables.data());
        ::_exit(127);
    }
}

TerminalRun::~TerminalRun()
{
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    ::close(m_terminal);
    ::close(m_toolSide);
}

void TerminalRun::type(const QByteArray& bytes) const
{
    [[maybe_unused]] const auto written = ::write(m_terminal, bytes.constData(), static_cast<size_t>(bytes.size()));
}

bool TerminalRun::echoes() const
{
    termios settings = {};
    ::tcgetattr(m_toolSide, &settings);
    return (settings.c_lflag & ECHO) != 0;
}

const QByteArray& TerminalRun::shown()
{
    takeWhatIsShown();
    return m_shown;
}

bool TerminalRun::waitFor(const QByteArray& text)
{
    return waitUntil([&] { return shown().contains(text); });
}

int TerminalRun::status()
{
    int status = 0;
    const bool hasEnded = waitUntil([&] {
        takeWhatIsShown();
        return ::waitpid(m_process, &status, WNOHANG) == m_process;
    });
    if (!hasEnded)
        return -1;
    m_process = -1;
    return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
}

void TerminalRun::takeWhatIsShown()
{
    std::array<char, 4096> bytes = {};
    for (;;) {
        const auto count = ::read(m_terminal, bytes.data(), bytes.size());
        if (count <= 0)
            return;
        m_shown.append(bytes.data(), count);
    }
}

} // namespace tests
