#include "platform/toolkit/views/TextInput.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace tljira {

bool isTextField(const QWidget& control)
{
    const auto* field = qobject_cast<const QLineEdit*>(&control);
    return field && !field->isReadOnly();
}

bool isTextArea(const QWidget& control)
{
    const auto* rich = qobject_cast<const QTextEdit*>(&control);
    const auto* plain = qobject_cast<const QPlainTextEdit*>(&control);
    return (rich && !rich->isReadOnly()) || (plain && !plain->isReadOnly());
}

} // namespace tljira
