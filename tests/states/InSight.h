#pragma once

#include <QList>
#include <QWidget>

namespace tests {

/// Whether the user sees the view and can reach it with a click: it is visible, enabled, and nothing lies over its
/// middle.
bool isInSight(const QWidget* view);

/// Whether the keyboard is with that view, and the view can be seen and used.
bool hasKeyboard(const QWidget* view);

/// What the user can reach with Tab in the window that the view stands in.
QList<QWidget*> stopsOfTab(const QWidget* view);

/// Whether somebody who reads comes upon the first view before the second: it stands above, in the same line before it,
/// or around it. What stands in one part of the window is read before the next part.
bool isReadBefore(const QWidget* first, const QWidget* second);

} // namespace tests
