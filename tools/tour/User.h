#pragma once

#include "tools/tour/Step.h"

#include <QString>
#include <QWidget>

class QAction;
class QLineEdit;
class QMenuBar;

/// What somebody at the screen does. The events take the way of real ones through the window system, so that what is
/// covered, blocked by a sheet or disabled does not answer.
namespace tessaloom::tour::user {

Step click(QWidget* view);
/// Replaces what stands in the field.
Step type(QLineEdit* field, QString text);
Step press(QWidget* window, Qt::Key key);
/// Opens the menu that has the action, and chooses it.
Step choose(QMenuBar* bar, QAction* action);
Step closeWindow(QWidget* window);

} // namespace tessaloom::tour::user
