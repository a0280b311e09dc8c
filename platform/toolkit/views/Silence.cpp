#include "platform/toolkit/views/Silence.h"

#include <utility>

namespace tljira {

Silence* Silence::innermost = nullptr;

Silence::Silence(QObject* view)
    : m_view(view)
    , m_outer(std::exchange(innermost, this))
    , m_before(QAccessible::installUpdateHandler(pass))
{
}

Silence::~Silence()
{
    QAccessible::installUpdateHandler(m_before);
    innermost = m_outer;
}

void Silence::pass(QAccessibleEvent* event)
{
    Silence* const self = innermost;
    if (event->object() == self->m_view)
        return;
    innermost = self->m_outer;
    QAccessible::installUpdateHandler(self->m_before);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(pass);
    innermost = self;
}

} // namespace tljira
