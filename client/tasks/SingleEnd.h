#pragma once

#include "platform/foundation/Export.h"

#include <QObject>

#include <memory>

namespace client {

/// Something that its caller hears of once, when it ends: in a later turn of the event loop than the one in which the
/// end was settled, or at once when the application quits or its object goes. It is kept until then. Main thread only.
class TL_EXPORT SingleEnd : public std::enable_shared_from_this<SingleEnd>
{
public:
    virtual ~SingleEnd();
    SingleEnd(const SingleEnd&) = delete;
    SingleEnd& operator=(const SingleEnd&) = delete;

    /// Its end has been settled. The caller may not have heard yet.
    bool isOver() const { return m_isOver; }

protected:
    SingleEnd();

    /// From now on it is kept, and ends with the application if not before.
    void keep();
    /// Whatever lives as long as this, for connections.
    QObject* context() { return &m_context; }

    /// The end has been settled; the caller hears in a later turn.
    void finish();
    /// The same, and what is under way is stopped.
    void giveUp();
    /// The same, and the caller hears before this returns.
    void endNow();

    /// Breaks off what is under way. The end has been settled.
    virtual void stop() = 0;
    /// Calls the caller back. Once.
    virtual void tell() = 0;

private:
    static void endAll();
    void deliver();

    QObject m_context;
    bool m_isOver = false;
    bool m_isDelivered = false;
};

} // namespace client
