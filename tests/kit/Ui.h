#pragma once

#include <QAbstractButton>
#include <QLineEdit>
#include <QString>

/// What a user does: events of mouse and keyboard, never a call in their place. A control has to be on screen and
/// enabled; otherwise the test fails.
namespace tests::ui {

void click(QAbstractButton* button);
/// Clicks the field and replaces what stands in it.
void type(QLineEdit* field, const QString& text);
/// A key, to what has the keyboard in that window.
void press(QWidget* window, Qt::Key key);

/// Whether a view shows as soon as the window that it stands in does.
bool isShown(const QWidget* view);
bool isOnScreen(const QWidget* view);

} // namespace tests::ui
