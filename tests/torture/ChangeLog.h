#pragma once

#include "tests/torture/Board.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace torture {

/// One change of the file system, as the preloaded library logged it.
struct LoggedChange
{
    ChangeHead::Kind kind = ChangeHead::Kind::Create;
    QString path = {};
    QString otherPath = {}; ///< the new name
    QByteArray data = {};
    quint64 inode = 0;
    qint64 offset = 0;
};

std::vector<LoggedChange> readChanges(const QString& path);

} // namespace torture
