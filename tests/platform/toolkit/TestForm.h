#pragma once

#include "platform/toolkit/windows/Window.h"

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

namespace tests {

/// A window with a field, a plain, a default and a cancel button, which counts their clicks.
struct TestForm
{
    explicit TestForm(const char* title, const QSize& size = QSize(400, 300));

    bool hasFocus(const QWidget* control) const { return window->widget()->window()->focusWidget() == control; }
    int clicks() const { return plainClicks + defaultClicks + cancelClicks; }

    /// The children of the content delete themselves with it.
    QWidget content;
    QLineEdit* field;
    QPushButton* plain;
    QPushButton* primary;
    QPushButton* cancel;
    std::shared_ptr<tljira::Window> window;
    int plainClicks = 0;
    int defaultClicks = 0;
    int cancelClicks = 0;
    int returns = 0; ///< that the field has announced
};

} // namespace tests
