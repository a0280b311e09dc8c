#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tests {

/// Nothing when it cannot be read.
std::optional<QByteArray> contentsOf(const QString& path);
/// Fails the test when it cannot be written.
void writeFile(const QString& path, const QByteArray& bytes);

} // namespace tests
