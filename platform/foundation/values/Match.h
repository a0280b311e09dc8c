#pragma once

#include <QRegularExpression>

namespace tljira {

/// The first match of `expression`, a right one, in `text`; none in a text with half a surrogate pair. From `offset`
/// on, where that is not 0, in a text in which there was a match before it: such a text is not checked again.
///
/// Qt says that there is no match also where it has no memory to look for one: std::bad_alloc, as from all else in Qt.
/// Going back takes memory, too: an expression for texts of any length never does (`++`, `*+`). From any thread.
QRegularExpressionMatch match(const QRegularExpression& expression, const QString& text, qsizetype offset = 0);

} // namespace tljira
