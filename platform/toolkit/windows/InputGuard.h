#pragma once

#include "platform/toolkit/windows/PressedKeys.h"

#include <QObject>

class QKeyEvent;

namespace tljira {

class WindowWidget;

/// Keeps from our windows what their user did not mean: keys that repeat because they are held, keys that were pressed
/// for something that is gone, and whatever aims at a control that is hidden, disabled or covered by a sheet. Windows
/// of the host are left alone.
class InputGuard : public QObject
{
public:
    /// Made with the first window, and gone with the application.
    static InputGuard& instance();

    /// Something else is on screen: the keys that are down mean nothing any more.
    void forgetKeysThatAreDown() { m_keys.screenChanged(); }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    explicit InputGuard(QObject* application);

    bool isUnwanted(QObject* receiver, QKeyEvent& event);
    bool isUnwantedIn(QWidget& target, const QKeyEvent& event) const;
    static void viewChanged(QObject* receiver);
    static void focusChanged(QWidget* old, QWidget* now);

    PressedKeys m_keys;
};

} // namespace tljira
