#include "platform/toolkit/tables/TableView.h"

#include "platform/toolkit/tables/TableAccessible.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace tljira {

namespace {

constexpr float shade = 0.16F;
constexpr qreal ringWidth = 2;

} // namespace

void TableView::setSelectsRows(bool selects)
{
    m_selectsRows = selects;
    m_selectedRow = -1;
    if (selects)
        selectRow(0);
    viewport()->update();
}

void TableView::selectRow(qint64 row)
{
    if (!m_selectsRows || row < 0 || row >= m_rows)
        return;
    m_selectedRow = row;
    scrollRowToVisible(row);
    viewport()->update();
    tellOfSelection(*this);
}

qint64 TableView::rowAt(const QPoint& point) const
{
    return step() > 0 && point.y() >= 0 ? (point.y() + offset()) / step() : -1;
}

/// Whether it is a key that moves the selection.
bool TableView::moveSelection(int key)
{
    const qint64 rowsInSight = std::max<qint64>(viewport()->height() / std::max(step(), 1), 1);
    const auto goTo = [this](qint64 row) {
        selectRow(std::clamp<qint64>(row, 0, std::max<qint64>(m_rows - 1, 0)));
        return true;
    };
    switch (key) {
    case Qt::Key_Up:
        return goTo(m_selectedRow - 1);
    case Qt::Key_Down:
        return goTo(m_selectedRow + 1);
    case Qt::Key_PageUp:
        return goTo(m_selectedRow - rowsInSight);
    case Qt::Key_PageDown:
        return goTo(m_selectedRow + rowsInSight);
    case Qt::Key_Home:
        return goTo(0);
    case Qt::Key_End:
        return goTo(m_rows - 1);
    default:
        return false;
    }
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    static const QHash<int, QAbstractSlider::SliderAction> actions = {
        {Qt::Key_Up, QAbstractSlider::SliderSingleStepSub},   {Qt::Key_Down, QAbstractSlider::SliderSingleStepAdd},
        {Qt::Key_PageUp, QAbstractSlider::SliderPageStepSub}, {Qt::Key_PageDown, QAbstractSlider::SliderPageStepAdd},
        {Qt::Key_Home, QAbstractSlider::SliderToMinimum},     {Qt::Key_End, QAbstractSlider::SliderToMaximum},
    };
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (m_selectedRow >= 0 && isReturn && hasFocus()) {
        Q_EMIT rowActivated(m_selectedRow);
        return;
    }
    if (m_selectsRows && moveSelection(event->key())) {
        // A control of the row before has the keyboard no longer: Return would be for that row.
        setFocus();
        return;
    }
    const auto action = actions.constFind(event->key());
    if (action == actions.constEnd())
        return QAbstractScrollArea::keyPressEvent(event);
    verticalScrollBar()->triggerAction(*action);
}

void TableView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        selectRow(rowAt(event->pos()));
}

void TableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_selectsRows || rowAt(event->pos()) != m_selectedRow)
        return;
    Q_EMIT rowActivated(m_selectedRow);
}

void TableView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
    tellOfSelection(*this);
}

void TableView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void TableView::paintSelection(QPainter& painter) const
{
    if (m_selectedRow < 0)
        return;
    const QRect row = rectOfRow(m_selectedRow);
    QColor color = palette().color(QPalette::Active, QPalette::Highlight);
    color.setAlphaF(shade);
    painter.fillRect(row, color);
    if (!hasFocus())
        return;
    color.setAlphaF(1);
    painter.setPen(QPen(color, ringWidth));
    painter.drawRect(row.toRectF().adjusted(ringWidth / 2, ringWidth / 2, -ringWidth / 2, -ringWidth / 2));
}

} // namespace tljira
