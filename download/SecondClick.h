#pragma once

#include <QObject>

class QWidget;

/// Keeps the second click of a double click from a control that was not there at the first one: it was meant for what
/// stood in that place then.
class SecondClick : public QObject
{
public:
    /// Belongs to the control; null does nothing.
    static void keepFrom(QWidget* control);

protected:
    bool eventFilter(QObject* control, QEvent* event) override;

private:
    explicit SecondClick(QWidget* control);

    bool m_hadFirst = false;
};
