#include "tests/states/PressWatch.h"

#include "tests/states/InSight.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>

namespace tests {

PressWatch::PressWatch()
{
    for (QWidget* view : QApplication::allWidgets()) {
        if (auto* button = qobject_cast<QAbstractButton*>(view)) {
            // It comes before all that a click does.
            connect(button, &QAbstractButton::pressed, this, [this, view] { note(view, "pressed"); });
        } else if (auto* field = qobject_cast<QLineEdit*>(view)) {
            connect(field, &QLineEdit::returnPressed, this, [this, view] { note(view, "entered"); });
            connect(field, &QLineEdit::textEdited, this, [this, view] { note(view, "written in"); });
        }
        if (isInSight(view) && !view->signalsBlocked()) {
            view->blockSignals(true);
            m_silenced.append(view);
        }
    }
}

PressWatch::~PressWatch()
{
    for (const auto& view : m_silenced) {
        if (view)
            view->blockSignals(false);
    }
}

void PressWatch::note(const QWidget* view, const char* what)
{
    if (!isInSight(view))
        m_outOfSight.append(QStringLiteral("%1 in %2 is %3")
                                .arg(view->objectName(), view->window()->windowTitle(), QString::fromLatin1(what)));
}

} // namespace tests
