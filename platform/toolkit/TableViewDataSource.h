#pragma once

#include "platform/foundation/Export.h"

#include <QtGlobal>

namespace platform {

class TableCellView;
class TableView;

/// Where a table's rows come from. Main thread; both may call back into the table and the windows around it.
class TL_EXPORT TableViewDataSource
{
public:
    virtual ~TableViewDataSource() = default;

    virtual qint64 numberOfRowsInTableView(TableView& table) = 0;

    /// The cell for a row that is about to be visible, from table.makeViewWithIdentifier(); null leaves the row empty.
    virtual TableCellView* viewForTableColumn(TableView& table, int column, qint64 row) = 0;
};

} // namespace platform
