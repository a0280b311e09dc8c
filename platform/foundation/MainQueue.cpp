#include "platform/foundation/MainQueue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <utility>

namespace tljira {

/// Lives in the application object's thread. Every operation is announced by an event of its own, so that other events
/// get their turn in between and an operation that runs an event loop does not hold up those behind it.
class MainQueueReceiver : public QObject
{
public:
    static void followApplication()
    {
        MainQueue::instance().open();
        qAddPostRoutine([] { MainQueue::instance().close(); });
    }

protected:
    /// Nothing but the queue's own events comes here, so the event, which another thread made, is not even looked at.
    void customEvent(QEvent*) override { MainQueue::instance().runNext(); }
};

MainQueue& MainQueue::instance()
{
    // Never destroyed: other threads may still add operations while the process exits.
    static MainQueue& queue = *new MainQueue;
    return queue;
}

void MainQueue::addOperation(std::function<void()> operation)
{
    const std::lock_guard lock(m_mutex);
    m_operations.push_back(std::move(operation));
    if (m_receiver)
        QCoreApplication::postEvent(m_receiver, new QEvent(QEvent::User));
}

void MainQueue::runNext()
{
    std::function<void()> operation;
    {
        const std::lock_guard lock(m_mutex);
        if (m_operations.empty())
            return;
        operation = std::move(m_operations.front());
        m_operations.pop_front();
        // Qt's event dispatcher for GLib sends events in batches, and an event loop that is run inside a batch takes
        // the rest of it for sent until somebody wakes the dispatcher.
        if (!m_operations.empty())
            QAbstractEventDispatcher::instance()->wakeUp();
    }
    if (operation)
        operation();
}

void MainQueue::open()
{
    auto* receiver = new MainQueueReceiver;
    receiver->moveToThread(QCoreApplication::instance()->thread());

    const std::lock_guard lock(m_mutex);
    m_receiver = receiver;
    for (std::size_t waiting = 0; waiting < m_operations.size(); ++waiting)
        QCoreApplication::postEvent(m_receiver, new QEvent(QEvent::User));
}

void MainQueue::close()
{
    std::deque<std::function<void()>> dropped; // Outlives the lock: what it holds may add operations as it goes.
    const std::lock_guard lock(m_mutex);
    delete std::exchange(m_receiver, nullptr);
    dropped.swap(m_operations);
}

void MainQueue::dropWhatNobodyRuns()
{
    std::deque<std::function<void()>> dropped;
    const std::lock_guard lock(m_mutex);
    if (!m_receiver)
        dropped.swap(m_operations);
}

namespace {

void followApplication()
{
    MainQueueReceiver::followApplication();
}

Q_COREAPP_STARTUP_FUNCTION(followApplication)

} // namespace

} // namespace tljira
