#pragma once

#include <QByteArray>

namespace cli {

QByteArray helpText();
QByteArray versionText();

} // namespace cli
