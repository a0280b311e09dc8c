#include "platform/toolkit/tables/TableView.h"

#include "platform/toolkit/tables/TableAccessible.h"
#include "platform/toolkit/tables/TableCellView.h"

#include <QApplication>
#include <QPainter>
#include <QScrollBar>

#include <limits>

namespace tljira {

namespace {

// Asked for in a turn of its own: what the data source does to the windows around it must not meet a half-shown table.
QEvent::Type firstShownEvent()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

constexpr qint64 rowsBeyondEitherEnd = 1;
constexpr QSize usual(320, 200);

// In the order in which Tab walks through them.
QList<QWidget*> tabStops(TableCellView* cell)
{
    QList<QWidget*> stops;
    for (QWidget* control : cell->findChildren<QWidget*>()) {
        if (control->focusPolicy() & Qt::TabFocus)
            stops.append(control);
    }
    return stops;
}

} // namespace

TableView::TableView(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    makeTablesAccessible();
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { followFocus(now); });
}

TableView::~TableView() = default;

void TableView::setDataSource(TableViewDataSource* source)
{
    m_source = source;
}

void TableView::setRowHeight(int height)
{
    m_rowHeight = std::max(height, 0);
    updateScrollBar();
    layOutCells();
}

QSize TableView::sizeHint() const
{
    return usual;
}

void TableView::reloadData()
{
    m_hasAsked = true;
    recycleOutside(0, -1);
    m_rows = m_source ? std::max<qint64>(m_source->numberOfRowsInTableView(*this), 0) : 0;
    m_measuredWidth = 0;
    m_selectedRow = -1;
    updateScrollBar();
    if (m_selectsRows)
        selectRow(0);
    layOutCells();
    viewport()->update();
}

TableCellView* TableView::makeViewWithIdentifier(const QString& identifier)
{
    QList<TableCellView*>& idle = m_reusable[identifier];
    if (!idle.isEmpty()) {
        TableCellView* cell = idle.takeLast();
        cell->prepareForReuse();
        return cell;
    }
    TableCellView* cell = m_makeCell ? m_makeCell(identifier) : nullptr;
    if (cell)
        cell->setParent(viewport());
    return cell;
}

TableCellView* TableView::cellAtRow(qint64 row) const
{
    const auto found = m_cells.find(row);
    return found == m_cells.end() ? nullptr : found->second;
}

qint64 TableView::rowForView(const QWidget* view) const
{
    for (const auto& [row, cell] : m_cells) {
        if (cell == view || cell->isAncestorOf(view))
            return row;
    }
    return -1;
}

// Geometry: rows stand at multiples of step() below the viewport's top, moved up by offset().

QRect TableView::rectOfRow(qint64 row) const
{
    return QRect(0, static_cast<int>(row * step() - offset()), viewport()->width(), step());
}

int TableView::step() const
{
    return m_rowHeight > 0 ? m_rowHeight : m_measuredHeight;
}

qint64 TableView::offset() const
{
    return verticalScrollBar()->value();
}

void TableView::updateScrollBar()
{
    const qint64 beyond = std::max<qint64>(m_rows * step() - viewport()->height(), 0);
    verticalScrollBar()->setRange(0, static_cast<int>(std::min<qint64>(beyond, std::numeric_limits<int>::max())));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(std::max(step(), 1));
}

void TableView::scrollRowToVisible(qint64 row)
{
    if (row < 0 || row >= m_rows || step() == 0)
        return;
    const qint64 top = row * step();
    const qint64 bottom = top + step() - viewport()->height();
    const qint64 target = std::max(std::min(offset(), top), bottom);
    verticalScrollBar()->setValue(static_cast<int>(std::min<qint64>(target, std::numeric_limits<int>::max())));
}

void TableView::layOutCells()
{
    if (!isVisible())
        return;
    if (m_isLayingOut) {
        // The data source reloaded or resized the table while it was asked for cells.
        QMetaObject::invokeMethod(this, &TableView::layOutCells, Qt::QueuedConnection);
        return;
    }
    m_isLayingOut = true;
    if (step() == 0 && m_rows > 0) {
        makeCells(0, 0);
        measure();
    }
    // Taller rows leave fewer of them in sight.
    do {
        if (step() == 0)
            break;
        const qint64 first = std::max<qint64>(offset() / step() - rowsBeyondEitherEnd, 0);
        const qint64 last = std::min((offset() + viewport()->height() - 1) / step() + rowsBeyondEitherEnd, m_rows - 1);
        recycleOutside(first, last);
        makeCells(first, last);
    } while (measure());
    placeCells();
    m_isLayingOut = false;
}

/// What the cells in sight need, and no less than their prototype has. Reused cells may need more than those before
/// them, and so may all when a scroll bar takes some of their width; rows become lower only when the table itself has
/// changed, so that this comes to an end. Answers whether anything is different.
bool TableView::measure()
{
    const bool beginsAnew = m_measuredWidth != width();
    const int needed = neededHeight();
    if (needed == 0 || (!beginsAnew && needed <= m_measuredHeight))
        return false;
    const bool changes = needed != m_measuredHeight;
    const qint64 firstInSight = step() > 0 ? offset() / step() : 0;
    m_measuredWidth = width();
    m_measuredHeight = needed;
    updateScrollBar();
    if (!changes || m_rowHeight > 0)
        return false;
    // What the user reads stays in sight, and so does what has been selected.
    verticalScrollBar()->setValue(
        static_cast<int>(std::min<qint64>(firstInSight * step(), std::numeric_limits<int>::max())));
    scrollRowToVisible(m_selectedRow);
    return true;
}

int TableView::neededHeight() const
{
    int height = 0;
    for (const auto& [row, cell] : m_cells) {
        const bool wraps = cell->hasHeightForWidth();
        const int needed = wraps ? cell->heightForWidth(viewport()->width()) : cell->minimumSizeHint().height();
        height = std::max({height, needed, m_prototypeHeight});
    }
    return height;
}

void TableView::recycleOutside(qint64 first, qint64 last)
{
    std::erase_if(m_cells, [&](const auto& entry) {
        const auto [row, cell] = entry;
        if (row >= first && row <= last)
            return false;
        if (cell->isAncestorOf(QApplication::focusWidget()))
            setFocus();
        m_reusable[cell->identifier()].append(cell);
        return true;
    });
}

bool TableView::makeCell(qint64 row)
{
    TableCellView* cell = m_source ? m_source->viewForTableColumn(*this, 0, row) : nullptr;
    if (!cell)
        return false;
    cell->setParent(viewport());
    if (m_prototypeHeight == 0)
        m_prototypeHeight = cell->height();
    m_cells[row] = cell;
    return true;
}

void TableView::makeCells(qint64 first, qint64 last)
{
    bool isNew = false;
    for (qint64 row = first; row <= last && row < m_rows; ++row)
        isNew = (!m_cells.contains(row) && makeCell(row)) || isNew;
    if (isNew)
        chainFocus();
}

void TableView::placeCells()
{
    for (const auto& [row, cell] : m_cells) {
        cell->setGeometry(rectOfRow(row));
        cell->show();
    }
    for (const QList<TableCellView*>& idle : std::as_const(m_reusable)) {
        for (TableCellView* cell : idle)
            cell->hide();
    }
}

void TableView::chainFocus()
{
    QWidget* previous = this;
    for (const auto& [row, cell] : m_cells) {
        for (QWidget* stop : tabStops(cell)) {
            setTabOrder(previous, stop);
            previous = stop;
        }
    }
}

void TableView::followFocus(const QWidget* now)
{
    if (!now || !viewport()->isAncestorOf(now))
        return;
    const qint64 row = rowForView(now);
    scrollRowToVisible(row);
    if (m_selectsRows)
        selectRow(row);
}

bool TableView::event(QEvent* event)
{
    if (event->type() != firstShownEvent())
        return QAbstractScrollArea::event(event);
    if (!m_hasAsked)
        reloadData();
    return true;
}

void TableView::showEvent(QShowEvent* event)
{
    QAbstractScrollArea::showEvent(event);
    if (m_hasAsked)
        layOutCells();
    else
        QCoreApplication::postEvent(this, new QEvent(firstShownEvent()), Qt::HighEventPriority);
}

void TableView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBar();
    layOutCells();
}

void TableView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    m_measuredWidth = 0;
    layOutCells();
}

void TableView::scrollContentsBy(int, int)
{
    layOutCells();
    viewport()->update();
}

// A hairline under each row, below the selection.
void TableView::paintEvent(QPaintEvent*)
{
    if (step() == 0)
        return;
    QPainter painter(viewport());
    QColor line = palette().color(QPalette::Text);
    line.setAlphaF(0.12F);
    for (const auto& [row, cell] : m_cells)
        painter.fillRect(0, cell->geometry().bottom(), viewport()->width(), 1, line);
    paintSelection(painter);
}

} // namespace tljira
