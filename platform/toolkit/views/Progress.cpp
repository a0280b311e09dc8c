#include "platform/toolkit/views/Progress.h"

#include "platform/toolkit/views/Silence.h"

#include <QAccessible>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

#include <utility>

namespace tljira {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenWords = 1s;

/// Tells screen readers of changes of a view that it belongs to.
class SeldomTold : public QObject
{
public:
    static SeldomTold& of(QWidget& view)
    {
        for (QObject* child : view.children()) {
            if (auto* present = dynamic_cast<SeldomTold*>(child))
                return *present;
        }
        return *new SeldomTold(view);
    }

    void change()
    {
        m_isDue = true;
        // Not before the program has come to the value that it wants to show.
        if (!m_pause.isActive())
            m_pause.start(0ms);
    }

private:
    explicit SeldomTold(QWidget& view)
        : QObject(&view)
        , m_view(view)
    {
        m_pause.setSingleShot(true);
        m_pause.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_pause, &QTimer::timeout, this, [this] { tell(); });
    }

    void tell()
    {
        if (!std::exchange(m_isDue, false) || !m_view.isVisible())
            return;
        m_pause.start(betweenWords);
        if (auto* bar = qobject_cast<QProgressBar*>(&m_view)) {
            QAccessibleValueChangeEvent event(bar, bar->value());
            QAccessible::updateAccessibility(&event);
        } else {
            QAccessibleEvent event(&m_view, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&event);
        }
    }

    QWidget& m_view;
    QTimer m_pause;
    bool m_isDue = false;
};

} // namespace

void showProgress(QProgressBar* bar, int value)
{
    if (!bar || bar->value() == value)
        return;
    {
        const Silence silence(bar);
        bar->setValue(value);
    }
    SeldomTold::of(*bar).change();
}

void showProgress(QLabel* label, const QString& text)
{
    if (!label || label->text() == text)
        return;
    {
        const Silence silence(label);
        label->setText(text);
    }
    SeldomTold::of(*label).change();
}

} // namespace tljira
