#include "platform/toolkit/windows/WindowAccessible.h"

#include "platform/toolkit/views/Accessible.h"
#include "platform/toolkit/windows/WindowParts.h"

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

} // namespace

void makeWindowsAccessible()
{
    installAccessible<WindowWidget, WindowAccessible>();
}

} // namespace tljira
