#include "platform/toolkit/windows/AlertView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QShowEvent>

namespace tljira {

namespace {

class AlertAccessible : public QAccessibleWidget
{
public:
    explicit AlertAccessible(AlertView* view)
        : QAccessibleWidget(view, QAccessible::AlertMessage)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? static_cast<AlertView*>(widget())->words() : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    if (className != QLatin1String(AlertView::staticMetaObject.className()))
        return nullptr;
    auto* const view = qobject_cast<AlertView*>(object);
    return view ? new AlertAccessible(view) : nullptr;
}

void makeAlertsAccessible()
{
    static const bool once = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(once)
}

void tell(AlertView* view, QAccessible::Event what)
{
    QAccessibleEvent event(view, what);
    QAccessible::updateAccessibility(&event);
}

} // namespace

AlertView::AlertView(QWidget* parent)
    : QWidget(parent)
{
    makeAlertsAccessible();
}

QString AlertView::words() const
{
    if (!accessibleName().isEmpty())
        return accessibleName();
    QStringList words;
    for (const QLabel* label : findChildren<QLabel*>()) {
        if (label->isVisibleTo(this) && !label->text().isEmpty())
            words.append(label->text());
    }
    return words.join(u'\n');
}

// AT-SPI knows no alert but a view of that kind which comes in sight.
void AlertView::announce()
{
    if (!isVisible() || words().isEmpty())
        return;
    tell(this, QAccessible::ObjectShow);
    tell(this, QAccessible::Alert);
    Q_EMIT announced(words());
}

// Qt says itself that a view has come in sight.
void AlertView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous() || words().isEmpty())
        return;
    tell(this, QAccessible::Alert);
    Q_EMIT announced(words());
}

} // namespace tljira
