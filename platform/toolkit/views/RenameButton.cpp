#include "platform/toolkit/views/RenameButton.h"

#include <QKeySequence>

namespace tljira {

void renameButton(QPushButton* button, const QString& text)
{
    if (!button || button->text() == text)
        return;
    // A button gives up its shortcut with its text.
    const QKeySequence shortcut = button->shortcut();
    button->setText(text);
    button->setShortcut(shortcut);
    button->setAccessibleName(text);
}

} // namespace tljira
