#include "platform/console/Terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace tljira::console {

namespace {

class EchoOff final : public Terminal::HiddenTyping
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
    ~EchoOff() override
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

Terminal::Terminal()
    : m_descriptor(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))
{
}

Terminal::~Terminal()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::unique_ptr<Terminal::HiddenTyping> Terminal::hideTyping() const
{
    auto echoOff = std::make_unique<EchoOff>(m_descriptor);
    if (!echoOff->isOff())
        return nullptr;
    return echoOff;
}

void Terminal::write(const QByteArray& bytes) const
{
    [[maybe_unused]] const auto written =
        ::write(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace tljira::console
