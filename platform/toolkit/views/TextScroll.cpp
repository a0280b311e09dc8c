#include "platform/toolkit/views/TextScroll.h"

#include <QEvent>
#include <QLayout>
#include <QScreen>

#include <algorithm>

namespace tljira {

TextScroll::TextScroll(QWidget* parent)
    : QScrollArea(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int TextScroll::heightForWidth(int width) const
{
    const QLayout* layout = widget() ? widget()->layout() : nullptr;
    if (!layout)
        return minimumSizeHint().height();
    const int frame = 2 * frameWidth();
    const int needed = frame + (layout->hasHeightForWidth() ? layout->totalHeightForWidth(width - frame)
                                                            : layout->totalSizeHint().height());
    return std::min(needed, screen()->availableGeometry().height() * 2 / 3);
}

bool TextScroll::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

} // namespace tljira
