#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/tables/TableViewDataSource.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QList>
#include <QPainter>
#include <QSize>
#include <QString>
#include <QWidget>

#include <functional>
#include <map>

namespace tljira {

/// A list of rows of equal height, one column, whose cells are views. Only the rows in sight and one more at either end
/// have cells; cells that scroll out serve the rows that scroll in, so that the cost depends on the height of the view
/// alone.
///
/// In Designer: a QScrollArea or QFrame promoted to tljira::TableView. The arrow, page, Home and End keys scroll, or
/// select where rows can be selected; Tab walks through the controls of the cells, from row to row, and brings them
/// into sight.
class TL_EXPORT TableView : public QAbstractScrollArea
{
    Q_OBJECT
    /// What Designer sets; see rowHeight().
    Q_PROPERTY(int rowHeight READ rowHeight WRITE setRowHeight)
    /// What Designer sets; see selectsRows().
    Q_PROPERTY(bool selectsRows READ selectsRows WRITE setSelectsRows)

public:
    /// Without a data source: empty.
    explicit TableView(QWidget* parent = nullptr);
    ~TableView() override;

    ///@{
    /// Not owned; must outlive the table or be taken back with nullptr.
    void setDataSource(TableViewDataSource* source);
    TableViewDataSource* dataSource() const { return m_source; }
    ///@}

    /// Asks the data source for the number of rows before it returns, and for the cells in sight when they are next
    /// laid out. Nobody need call it for a table that has not been on screen: the first time it is shown it asks by
    /// itself.
    void reloadData();

    /// A cell that no row uses at present, or a new one; null if there is no such cell.
    TableCellView* makeViewWithIdentifier(const QString& identifier);

    /// As the data source said last; 0 before the table has asked.
    qint64 numberOfRows() const { return m_rows; }

    /// The cell that stands for the row at present; null for a row out of sight.
    TableCellView* cellAtRow(qint64 row) const;
    /// The row whose cell the view is, or stands in; -1 if there is none.
    qint64 rowForView(const QWidget* view) const;

    /// Scrolls no further than it must; a row that does not exist changes nothing.
    void scrollRowToVisible(qint64 row);

    ///@{
    /// Whether there is a selected row, which reloadData() makes the first one. Keys, a click on a row, and the focus
    /// in one of its controls move it. Off by default.
    bool selectsRows() const { return m_selectsRows; }
    void setSelectsRows(bool selects);
    ///@}

    ///@{
    /// -1 while there is none. A row that does not exist is not selected; the selected one is brought into sight.
    qint64 selectedRow() const { return m_selectedRow; }
    void selectRow(qint64 row);
    ///@}

    ///@{
    /// In points; 0, the default, takes the height that the cells in sight need, and at least that of their prototype.
    int rowHeight() const { return m_rowHeight; }
    void setRowHeight(int height);
    ///@}

    /// Qt's own.
    QSize sizeHint() const override;

    /// A new cell of that identifier, awake and without a parent, or null. The table owns the cell.
    using CellMaker = std::function<TableCellView*(const QString& identifier)>;

    /// Where new cells come from. A table of an interface file makes them from the prototypes of that file.
    void setCellMaker(CellMaker maker) { m_makeCell = std::move(maker); }

Q_SIGNALS:
    /// Return, Enter or a double click chose the selected row.
    void rowActivated(qint64 row);

protected:
    ///@{
    /// Qt's own.
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    ///@}

private:
    void layOutCells();
    void makeCells(qint64 first, qint64 last);
    bool makeCell(qint64 row);
    void recycleOutside(qint64 first, qint64 last);
    void placeCells();
    void chainFocus();
    void updateScrollBar();
    void followFocus(const QWidget* now);
    bool measure();
    int neededHeight() const;
    int step() const;
    qint64 offset() const;
    qint64 rowAt(const QPoint& point) const;
    QRect rectOfRow(qint64 row) const;
    bool moveSelection(int key);
    void paintSelection(QPainter& painter) const;

    TableViewDataSource* m_source = nullptr;
    CellMaker m_makeCell;
    std::map<qint64, TableCellView*> m_cells;
    QHash<QString, QList<TableCellView*>> m_reusable;
    qint64 m_rows = 0;
    int m_rowHeight = 0;
    int m_prototypeHeight = 0;
    int m_measuredHeight = 0;
    int m_measuredWidth = 0;
    qint64 m_selectedRow = -1;
    bool m_selectsRows = false;
    bool m_hasAsked = false;
    bool m_isLayingOut = false;
};

} // namespace tljira
