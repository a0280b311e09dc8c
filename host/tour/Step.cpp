#include "host/tour/Step.h"

#include <QTimer>

namespace tessaloom::tour {

namespace {

using namespace std::chrono_literals;
constexpr auto pause = 5ms;
constexpr int patience = 60s / pause;

} // namespace

void InNextTurn::await_suspend(std::coroutine_handle<> step) const
{
    if (m_action)
        QTimer::singleShot(0, m_action);
    QTimer::singleShot(0, [step] { step.resume(); });
}

void Until::await_suspend(std::coroutine_handle<> step)
{
    m_step = step;
    QTimer::singleShot(pause, [this] { look(); });
}

void Until::look()
{
    m_holds = m_condition();
    if (m_holds || ++m_looks == patience)
        m_step.resume();
    else
        QTimer::singleShot(pause, [this] { look(); });
}

} // namespace tessaloom::tour
