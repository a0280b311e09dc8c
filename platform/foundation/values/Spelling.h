#pragma once

#include <QString>

namespace tljira {

/// How many characters of `text`, from `start` on, spell all of `word`; 0 if they do not. A character may stand for
/// itself, or be written as JSON, addresses, forms or HTML write it.
qsizetype spellingOf(const QString& word, QStringView text, qsizetype start);

} // namespace tljira
