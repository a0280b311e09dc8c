#pragma once

#include <QString>

namespace cli {

/// `text` with "?" in place of every character that a terminal obeys instead of showing: controls, line and paragraph
/// separators, and those that turn the direction of writing.
QString harmless(const QString& text);

/// The same on one line, with the blanks that a line end leaves.
QString harmlessLine(const QString& text);

} // namespace cli
