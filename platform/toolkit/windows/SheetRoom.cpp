#include "platform/toolkit/windows/SheetRoom.h"

#include <algorithm>

namespace tljira {

QRect SheetRoom::grow(const QRect& content, const QSize& sheet, const QRect& area)
{
    m_content = content;
    m_window = QRect(content.topLeft(), content.size().expandedTo(sheet));
    const bool hasGrown = m_window.size() != content.size();
    if (hasGrown && !area.isNull() && m_window.bottom() > area.bottom()) {
        const int distance = std::min(m_window.bottom() - area.bottom(), m_window.top() - area.top());
        m_window.translate(0, -std::max(distance, 0));
    }
    return m_window;
}

QRect SheetRoom::contentIn(const QRect& window) const
{
    return window.size() == m_window.size() ? QRect(window.topLeft(), m_content.size()) : window;
}

QRect SheetRoom::contentAfter(const QRect& window) const
{
    return window == m_window ? m_content : contentIn(window);
}

} // namespace tljira
