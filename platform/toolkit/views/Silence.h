#pragma once

#include <QAccessible>

namespace tljira {

/// Keeps from screen readers what Qt tells them of a view by itself, from construction to destruction. Of other views
/// they hear meanwhile.
class Silence
{
public:
    explicit Silence(QObject* view);
    ~Silence();
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    static void pass(QAccessibleEvent* event);

    static Silence* innermost;

    QObject* const m_view;
    Silence* const m_outer;
    const QAccessible::UpdateHandler m_before;
};

} // namespace tljira
