#pragma once

#include <QRect>
#include <QSize>

namespace tljira {

/// The room that a window makes for a sheet that does not fit: it grows downwards (and to the right), while its content
/// and its frame stay what they are. A window that has another size than it was given then has been resized by its
/// user: all of it is content.
class SheetRoom
{
public:
    /// The window's rectangle for this content and a sheet of this size, which may be empty. What would lie below
    /// `area` moves up, as far as the upper edge of `area`; a null area sets no limit.
    QRect grow(const QRect& content, const QSize& sheet, const QRect& area);

    /// The content of a window that has this rectangle.
    QRect contentIn(const QRect& window) const;

    /// Whether a window of this rectangle has another size than it was given.
    bool isResizedByUser(const QRect& window) const { return window.size() != m_window.size(); }

    /// Where the content belongs once the sheet has gone.
    QRect contentAfter(const QRect& window) const;

private:
    QRect m_content;
    QRect m_window;
};

} // namespace tljira
