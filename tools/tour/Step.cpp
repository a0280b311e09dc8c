#include "tools/tour/Step.h"

#include <QApplication>
#include <QTimer>

#include <chrono>
#include <memory>

namespace tessaloom::tour {

namespace {

using namespace std::chrono_literals;
constexpr auto pause = 5ms;
constexpr int patience = 60s / pause;

/// One action and the step that it belongs to; the step goes on once.
class PendingAction : public std::enable_shared_from_this<PendingAction>
{
public:
    PendingAction(std::function<void()> action, std::coroutine_handle<> step)
        : m_action(std::move(action))
        , m_step(step)
        , m_modalBefore(QApplication::activeModalWidget())
    {
    }

    void begin()
    {
        QTimer::singleShot(pause, [self = shared_from_this()] { self->look(); });
        m_action();
        goOn();
    }

private:
    void look()
    {
        if (m_hasGoneOn)
            return;
        if (QApplication::activeModalWidget() != m_modalBefore)
            goOn();
        else
            QTimer::singleShot(pause, [self = shared_from_this()] { self->look(); });
    }

    void goOn()
    {
        if (!std::exchange(m_hasGoneOn, true))
            QTimer::singleShot(0, [step = m_step] { step.resume(); });
    }

    std::function<void()> m_action;
    std::coroutine_handle<> m_step;
    QWidget* m_modalBefore;
    bool m_hasGoneOn = false;
};

} // namespace

void InNextTurn::await_suspend(std::coroutine_handle<> step) const
{
    QTimer::singleShot(0, [step] { step.resume(); });
}

void Perform::await_suspend(std::coroutine_handle<> step) const
{
    QTimer::singleShot(0, [pending = std::make_shared<PendingAction>(m_action, step)] { pending->begin(); });
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
