#include "platform/toolkit/tables/TableAccessible.h"

#include "platform/toolkit/tables/TableCellView.h"
#include "platform/toolkit/tables/TableView.h"
#include "platform/toolkit/views/Accessible.h"

#include <QLabel>

namespace tljira {

namespace {

class ListAccessible : public QAccessibleWidget
{
public:
    explicit ListAccessible(TableView* table)
        : QAccessibleWidget(table, QAccessible::List)
    {
    }
};

class RowAccessible : public QAccessibleWidget
{
public:
    explicit RowAccessible(TableCellView* cell)
        : QAccessibleWidget(cell, QAccessible::ListItem)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || !widget()->accessibleName().isEmpty())
            return QAccessibleWidget::text(kind);
        QStringList words;
        for (const QLabel* label : widget()->findChildren<QLabel*>()) {
            if (label->isVisibleTo(widget()) && !label->text().isEmpty())
                words.append(label->text());
        }
        return words.join(QStringLiteral(", "));
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const TableView* const list = table();
        if (!list || !list->selectsRows())
            return state;
        state.selectable = true;
        state.selected = list->rowForView(widget()) == list->selectedRow();
        state.focusable = true;
        state.focused = state.selected && list->hasFocus();
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (const TableView* const list = table(); list && list->selectsRows())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString& name) override
    {
        TableView* const list = table();
        if (name != pressAction() || !list)
            return QAccessibleWidget::doAction(name);
        const qint64 row = list->rowForView(widget());
        list->selectRow(row);
        Q_EMIT list->rowActivated(row);
    }

private:
    TableView* table() const
    {
        for (QWidget* step = widget()->parentWidget(); step; step = step->parentWidget()) {
            if (auto* const found = qobject_cast<TableView*>(step))
                return found;
        }
        return nullptr;
    }
};

} // namespace

void makeTablesAccessible()
{
    installAccessible<TableView, ListAccessible>();
    installAccessible<TableCellView, RowAccessible>();
}

// The keyboard stays with the table; whoever does not see it follows the row.
void tellOfSelection(const TableView& table)
{
    TableCellView* const cell = table.hasFocus() ? table.cellAtRow(table.selectedRow()) : nullptr;
    if (!cell)
        return;
    QAccessibleEvent event(cell, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

} // namespace tljira
