#include "platform/toolkit/views/FitContent.h"

#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Window.h"

#include <QLayout>

namespace tljira {

QSize neededSize(QWidget* view)
{
    if (!view)
        return {};
    layoutSubtreeIfNeeded(view);
    return neededSizeAsLaidOut(view);
}

QSize neededSizeAsLaidOut(QWidget* view)
{
    if (!view)
        return {};
    QSize size = view->minimumSizeHint().expandedTo(view->minimumSize());
    size.setWidth(std::max(size.width(), view->width()));
    const QLayout* layout = view->layout();
    if (layout && layout->hasHeightForWidth())
        size.setHeight(std::max(layout->totalMinimumHeightForWidth(size.width()), view->minimumHeight()));
    return size;
}

void growToFit(const std::shared_ptr<Window>& window, bool animate)
{
    if (QWidget* content = window ? window->contentView() : nullptr)
        growTo(neededSize(content), window, animate);
}

void growTo(const QSize& contentSize, const std::shared_ptr<Window>& window, bool animate)
{
    QWidget* content = window ? window->contentView() : nullptr;
    if (!content)
        return;
    const QSize missing = (contentSize - content->size()).expandedTo(QSize(0, 0));
    if (missing.isNull())
        return;
    // A window that has no place yet does not get one.
    if (!window->isVisible()) {
        content->resize(content->size() + missing);
        layoutSubtreeIfNeeded(content);
        window->widget()->resize(content->size());
        return;
    }
    QRectF frame = window->frame();
    frame.setRect(frame.x(), frame.y() - missing.height(), frame.width() + missing.width(),
                  frame.height() + missing.height());
    window->setFrame(frame, true, animate);
}

} // namespace tljira
