#include "download/TightLayout.h"

#include <QBoxLayout>
#include <QScrollArea>
#include <QVariant>

#include <algorithm>

namespace {

constexpr char giveWay[] = "givesWay";
constexpr char marginsProperty[] = "designedMargins";
constexpr char spacingProperty[] = "designedSpacing";
constexpr int leastGap = 2;
constexpr int tightness = 2;

QList<QLayout*> layoutsOf(const QWidget* view)
{
    QList<QLayout*> layouts = view->findChildren<QLayout*>();
    // A button or a line of text keeps its room.
    layouts.removeIf([view](const QLayout* layout) {
        const QWidget* owner = layout->parentWidget();
        return owner != view && !qobject_cast<const QScrollArea*>(owner->parentWidget()->parentWidget());
    });
    return layouts;
}

void setTight(QLayout& layout, bool isTight)
{
    if (!layout.property(spacingProperty).isValid()) {
        layout.setProperty(spacingProperty, layout.spacing());
        layout.setProperty(marginsProperty, QVariant::fromValue(layout.contentsMargins()));
    }
    const QMargins margins = layout.property(marginsProperty).value<QMargins>();
    const int spacing = layout.property(spacingProperty).toInt();
    layout.setContentsMargins(
        isTight ? QMargins(margins.left(), margins.top() / tightness, margins.right(), margins.bottom() / tightness)
                : margins);
    const auto* box = qobject_cast<const QBoxLayout*>(&layout);
    const bool isRow =
        box && (box->direction() == QBoxLayout::LeftToRight || box->direction() == QBoxLayout::RightToLeft);
    layout.setSpacing(isTight && !isRow ? std::min(spacing, leastGap) : spacing);
}

int heightOf(QLayoutItem& item, int width)
{
    if (auto* area = qobject_cast<QScrollArea*>(item.widget())) {
        QLayout* layout = area->widget() ? area->widget()->layout() : nullptr;
        if (!layout)
            return 0;
        return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
    }
    return item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
}

int neededHeight(const QWidget& view, int width)
{
    QLayout& layout = *view.layout();
    const QMargins margins = layout.contentsMargins();
    int height = margins.top() + margins.bottom();
    int count = 0;
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem& item = *layout.itemAt(i);
        if (item.isEmpty())
            continue;
        height += heightOf(item, width - margins.left() - margins.right());
        ++count;
    }
    return height + std::max(count - 1, 0) * layout.spacing();
}

/// Layouts keep what they have learned of a view inside until it tells them.
void forgetOldSizes(const QWidget* view)
{
    for (QWidget* child : view->findChildren<QWidget*>())
        child->updateGeometry();
}

void letGo(const QList<QWidget*>& views, bool isGone)
{
    for (QWidget* view : views)
        view->setHidden(isGone);
}

} // namespace

void fitIntoHeight(QWidget* view, int width, int height)
{
    if (!view || !view->layout())
        return;
    QList<QWidget*> optional = view->findChildren<QWidget*>();
    optional.removeIf([](const QWidget* child) { return !child->property(giveWay).toBool(); });
    const QList<QLayout*> layouts = layoutsOf(view);
    forgetOldSizes(view);
    const auto apply = [&](bool isTight, bool isShort) {
        for (QLayout* layout : layouts)
            setTight(*layout, isTight);
        letGo(optional, isShort);
        return neededHeight(*view, width) <= height;
    };
    if (!apply(false, false) && !apply(true, false))
        apply(true, true);
}
