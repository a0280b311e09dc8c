#pragma once

#include "platform/foundation/Export.h"

#include <QtGlobal>

namespace tljira {

class TableCellView;
class TableView;

/// Where a table's rows come from. Main thread; both may call back into the table and the windows around it.
class TL_EXPORT TableViewDataSource
{
public:
    virtual ~TableViewDataSource() = default;

    /// Asked on every TableView::reloadData(). Less than 0 counts as 0.
    virtual qint64 numberOfRowsInTableView(TableView& table) = 0;

    /// The cell for a row that is about to be visible, from table.makeViewWithIdentifier(); null leaves the row empty.
    /// `column` is always 0.
    virtual TableCellView* viewForTableColumn(TableView& table, int column, qint64 row) = 0;
};

} // namespace tljira
