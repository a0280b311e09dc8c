#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace tests {

/// Notes what is pressed or written in although its user does not see it, in all windows of the program. What is in
/// sight does nothing while this lives, so that one state can be tried with many keys.
class PressWatch : public QObject
{
public:
    PressWatch();
    ~PressWatch() override;

    /// Names of the views, in the order of what happened.
    QStringList outOfSight() const { return m_outOfSight; }

private:
    void note(const QWidget* view, const char* what);

    QList<QPointer<QWidget>> m_silenced;
    QStringList m_outOfSight;
};

} // namespace tests
