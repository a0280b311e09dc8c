#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <initializer_list>

namespace tljira {

// What plain widgets lack beside the platform's views. A null view is a quiet no-op everywhere; rectangles of views are
// Qt's (origin top left).

/// Moves `view` into `superview`, on top of what is there. It shows unless it was hidden with setHidden().
void addSubview(QWidget* superview, QWidget* view);

/// Takes `view` out of its superview. It is off screen until added again; its owner stays the same.
void removeFromSuperview(QWidget* view);

/// The direct subviews, bottommost first.
QList<QWidget*> subviews(const QWidget* view);

/// Lays out everything below `view` now instead of in a later turn of the event loop.
void layoutSubtreeIfNeeded(QWidget* view);

inline void setHidden(QWidget* view, bool hidden)
{
    if (view)
        view->setHidden(hidden);
}

/// Hides all of these and then shows `shown`, which may be one of them. A view with the keyboard in it keeps that.
void showOnly(QWidget* shown, std::initializer_list<QWidget*> views);

inline void setEnabled(QWidget* view, bool enabled)
{
    if (view)
        view->setEnabled(enabled);
}

/// What stands below `root` under this name, or null: for what an interface file of the host's own may lack without a
/// word.
template <class View>
View* findView(const QWidget* root, const char* name)
{
    return root ? root->findChild<View*>(QLatin1String(name)) : nullptr;
}

/// The text of a label, field or button; an absent view takes none and has an empty one.
template <class Control>
void setText(const QPointer<Control>& control, const QString& text)
{
    if (control)
        control->setText(text);
}

template <class Control>
QString text(const QPointer<Control>& control)
{
    return control ? control->text() : QString();
}
template <class Control>
QString text(const Control* control)
{
    return control ? control->text() : QString();
}

/// The same for what findView() answers.
template <class Control>
void setText(Control* control, const QString& text)
{
    if (control)
        control->setText(text);
}

} // namespace tljira

/// What "%@" prints of a view: "<QLabel: errorLabel>"; found by tljira::log() wherever this header is included.
QString describe(const QWidget* view);
