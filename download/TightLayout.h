#pragma once

#include <QWidget>

/// Lets a view that has a layout, and at most one scroll area, do with the height that it has: where a large font makes
/// it need more, its margins and gaps shrink, and then what has the dynamic property `givesWay` goes. What still does
/// not fit can be scrolled, if it stands in the scroll area. Everything comes back when there is room.
void fitIntoHeight(QWidget* view, int width, int height);
