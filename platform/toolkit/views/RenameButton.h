#pragma once

#include <QPushButton>
#include <QString>

namespace tljira {

/// Gives a button another text, for screen readers too; it keeps its shortcut. Null is a quiet no-op.
void renameButton(QPushButton* button, const QString& text);

} // namespace tljira
