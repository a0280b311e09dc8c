#include "platform/toolkit/windows/AlertView.h"

#include "platform/toolkit/views/Accessible.h"
#include "platform/toolkit/views/Silence.h"
#include "platform/toolkit/windows/WindowFocus.h"

#include <QLabel>
#include <QShowEvent>

#include <optional>

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

void tell(AlertView* view, QAccessible::Event what)
{
    QAccessibleEvent event(view, what);
    QAccessible::updateAccessibility(&event);
}

} // namespace

AlertView::AlertView(QWidget* parent)
    : QWidget(parent)
{
    installAccessible<AlertView, AlertAccessible>();
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
    if (isVisible() && !words().isEmpty() && !WindowFocus::isCovered(this))
        tell(this, QAccessible::ObjectShow);
    tellWords();
}

void AlertView::setVisible(bool visible)
{
    std::optional<Silence> silence;
    if (visible && WindowFocus::isCovered(this))
        silence.emplace(this);
    QWidget::setVisible(visible);
}

// Qt says itself that a view has come in sight.
void AlertView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        tellWords();
}

void AlertView::tellWords()
{
    if (!isVisible() || words().isEmpty())
        return;
    m_isWaiting = WindowFocus::isCovered(this);
    if (m_isWaiting)
        return;
    tell(this, QAccessible::Alert);
    Q_EMIT announced(words());
}

void AlertView::sheetHasGone()
{
    if (m_isWaiting)
        announce();
}

} // namespace tljira
