#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/TableViewDataSource.h"

#include <QAbstractScrollArea>
#include <QHash>

#include <map>
#include <memory>

namespace platform {

class Nib;

/// A list of rows of equal height, one column, whose cells are views. Only the rows in sight and one more at either end
/// have cells; cells that scroll out serve the rows that scroll in, so that the cost depends on the height of the view
/// alone.
///
/// In Designer: a QScrollArea or QFrame promoted to platform::TableView. The arrow, page, Home and End keys scroll; Tab
/// walks through the controls of the cells, from row to row, and brings them into sight.
class TL_EXPORT TableView : public QAbstractScrollArea
{
    Q_OBJECT
    Q_PROPERTY(int rowHeight READ rowHeight WRITE setRowHeight)

public:
    explicit TableView(QWidget* parent = nullptr);
    ~TableView() override;

    /// Not owned; must outlive the table or be taken back with nullptr.
    void setDataSource(TableViewDataSource* source);
    TableViewDataSource* dataSource() const { return m_source; }

    /// Asks the data source for the number of rows before it returns, and for the cells in sight when they are next
    /// laid out. Nobody need call it for a table that has not been on screen: the first time it is shown it asks by
    /// itself.
    void reloadData();

    /// A cell that no row uses at present, or a new one; null if the interface file has no such prototype.
    TableCellView* makeViewWithIdentifier(const QString& identifier);

    qint64 numberOfRows() const { return m_rows; }

    /// The cell that stands for the row at present; null for a row out of sight.
    TableCellView* cellAtRow(qint64 row) const;
    /// -1 if the view stands in no row.
    qint64 rowForView(const QWidget* view) const;

    void scrollRowToVisible(qint64 row);

    /// In points; 0, the default, takes the height of the first cell that is made.
    int rowHeight() const { return m_rowHeight; }
    void setRowHeight(int height);

    QSize sizeHint() const override;

    /// Where prototypes come from; the interface file that brings the table sets it.
    void setNib(std::shared_ptr<Nib> nib) { m_nib = std::move(nib); }

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void layOutCells();
    void makeCells(qint64 first, qint64 last);
    bool makeCell(qint64 row);
    void recycleOutside(qint64 first, qint64 last);
    void placeCells();
    void chainFocus();
    void updateScrollBar();
    void followFocus(const QWidget* now);
    int step() const;
    qint64 offset() const;

    TableViewDataSource* m_source = nullptr;
    std::shared_ptr<Nib> m_nib;
    std::map<qint64, TableCellView*> m_cells;
    QHash<QString, QList<TableCellView*>> m_reusable;
    qint64 m_rows = 0;
    int m_rowHeight = 0;
    int m_measuredHeight = 0;
    bool m_hasAsked = false;
    bool m_isLayingOut = false;
};

} // namespace platform
