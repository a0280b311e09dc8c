#include "client/tasks/SingleEnd.h"

#include "platform/foundation/MainQueue.h"

#include <QCoreApplication>

#include <utility>
#include <vector>

namespace client {

namespace {

std::vector<std::shared_ptr<SingleEnd>>& underWay()
{
    // Never destroyed: an operation may end while the process exits.
    static auto& all = *new std::vector<std::shared_ptr<SingleEnd>>;
    return all;
}

bool hasPostRoutine = false;

} // namespace

SingleEnd::SingleEnd() = default;

SingleEnd::~SingleEnd() = default;

void SingleEnd::keep()
{
    underWay().push_back(shared_from_this());
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &m_context, [this] { endNow(); });
    // Without an event loop nobody is about to quit.
    if (!std::exchange(hasPostRoutine, true))
        qAddPostRoutine(endAll);
}

/// Qt forgets its post routines once it has called them: with the next application object there is none.
void SingleEnd::endAll()
{
    hasPostRoutine = false;
    for (const auto& one : std::vector(underWay()))
        one->endNow();
}

void SingleEnd::finish()
{
    if (std::exchange(m_isOver, true))
        return;
    tljira::MainQueue::instance().addOperation([self = shared_from_this()] { self->deliver(); });
}

void SingleEnd::giveUp()
{
    const auto self = shared_from_this();
    finish();
    stop();
}

void SingleEnd::endNow()
{
    const auto self = shared_from_this();
    giveUp();
    deliver();
}

void SingleEnd::deliver()
{
    if (std::exchange(m_isDelivered, true))
        return;
    const auto self = shared_from_this();
    std::erase(underWay(), self);
    tell();
}

} // namespace client
