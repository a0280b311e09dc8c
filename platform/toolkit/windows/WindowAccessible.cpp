#include "platform/toolkit/windows/WindowAccessible.h"

#include "platform/toolkit/tables/TableCellView.h"
#include "platform/toolkit/tables/TableView.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace tljira {

namespace {

class WindowAccessible : public QAccessibleWidget
{
public:
    explicit WindowAccessible(WindowWidget* window)
        : QAccessibleWidget(window, QAccessible::Dialog)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = state.modal || parts().drawnIn();
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? widget()->windowTitle() : QAccessibleWidget::text(kind);
    }

    int childCount() const override { return static_cast<int>(views().size()); }

    QAccessibleInterface* child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(views().value(index));
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return static_cast<int>(views().indexOf(child ? child->object() : nullptr));
    }

private:
    const WindowParts& parts() const { return static_cast<WindowWidget*>(widget())->parts(); }

    QList<QObject*> views() const
    {
        if (WindowWidget* sheet = parts().sheetInside())
            return {sheet};
        return parts().content ? QList<QObject*>{parts().content.get()} : QList<QObject*>{};
    }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    // Asked for each class of an object, from its own to the most general one.
    const auto isAskedFor = [&className](const QMetaObject& kind) {
        return className == QLatin1String(kind.className());
    };
    if (isAskedFor(TableView::staticMetaObject))
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::List);
    if (isAskedFor(TableCellView::staticMetaObject))
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::ListItem);
    if (!isAskedFor(WindowWidget::staticMetaObject))
        return nullptr;
    auto* const window = dynamic_cast<WindowWidget*>(object);
    return window ? new WindowAccessible(window) : nullptr;
}

} // namespace

void makeWindowsAccessible()
{
    static const bool once = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    static_cast<void>(once);
}

} // namespace tljira
