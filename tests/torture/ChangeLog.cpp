#include "tests/torture/ChangeLog.h"

#include "tests/torture/Place.h"

#include <cstring>

namespace torture {

std::vector<LoggedChange> readChanges(const QString& path)
{
    const QByteArray bytes = bytesOf(path);
    std::vector<LoggedChange> changes;
    qsizetype position = 0;
    const auto take = [&](std::uint32_t size) {
        const QByteArray piece = bytes.mid(position, size);
        position += size;
        return piece;
    };
    while (bytes.size() - position >= static_cast<qsizetype>(sizeof(ChangeHead))) {
        ChangeHead head;
        std::memcpy(&head, bytes.constData() + position, sizeof head);
        position += sizeof head;
        LoggedChange change;
        change.kind = head.kind;
        change.path = QString::fromUtf8(take(head.pathLength));
        change.otherPath = QString::fromUtf8(take(head.otherPathLength));
        change.data = take(head.dataLength);
        change.inode = head.inode;
        change.offset = head.offset;
        changes.push_back(change);
    }
    return changes;
}

} // namespace torture
