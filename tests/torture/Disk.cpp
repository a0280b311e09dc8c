#include "tests/torture/Disk.h"

#include "tests/torture/Place.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <sys/stat.h>

namespace torture {

namespace {

using Kind = ChangeHead::Kind;

quint64 inodeAt(const QString& path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
}

QString folderOf(const QString& path)
{
    return path.left(path.lastIndexOf(u'/'));
}

} // namespace

Disk::Disk(const QStringList& roots)
{
    for (const QString& root : roots) {
        m_items.insert(root, {});
        QDirIterator item(root, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (item.hasNext()) {
            const QString path = item.next();
            if (item.fileInfo().isDir()) {
                m_items.insert(path, {});
                continue;
            }
            const QByteArray bytes = torture::bytesOf(path);
            const auto file = std::make_shared<File>(File{bytes, bytes});
            m_files.insert(inodeAt(path), file);
            m_items.insert(path, {file});
        }
    }
}

void Disk::apply(const LoggedChange& change)
{
    switch (change.kind) {
    case Kind::Create:
        // The number may have belonged to a file that is gone.
        m_files.insert(change.inode, std::make_shared<File>());
        m_names.push_back({change, m_files.value(change.inode)});
        break;
    case Kind::Link:
        m_names.push_back({change, fileOf(change.inode)});
        break;
    case Kind::Rename:
    case Kind::Remove:
    case Kind::MakeFolder:
        m_names.push_back({change, nullptr});
        break;
    case Kind::Truncate:
        if (const auto file = fileOf(change.inode))
            file->now.truncate(change.offset);
        break;
    case Kind::Write:
        if (const auto file = fileOf(change.inode)) {
            if (file->now.size() < change.offset + change.data.size())
                file->now.resize(change.offset + change.data.size());
            file->now.replace(change.offset, change.data.size(), change.data);
        }
        break;
    case Kind::Sync:
        sync(change);
        break;
    }
}

void Disk::sync(const LoggedChange& change)
{
    if (const auto file = fileOf(change.inode))
        file->synced = file->now;
    for (NameChange& name : m_names) {
        const bool isThere = folderOf(name.change.path) == change.path;
        const bool isOtherThere = name.change.otherPath.isEmpty() || folderOf(name.change.otherPath) == change.path;
        name.isSettled |= isThere && isOtherThere;
    }
}

int Disk::unsettledNames() const
{
    return static_cast<int>(std::ranges::count(m_names, false, &NameChange::isSettled));
}

void Disk::apply(const NameChange& name, Items& items)
{
    const LoggedChange& change = name.change;
    switch (change.kind) {
    case Kind::Create:
    case Kind::Link:
        items.insert(change.path, {name.file});
        break;
    case Kind::MakeFolder:
        items.insert(change.path, {});
        break;
    case Kind::Rename:
        if (items.contains(change.path))
            items.insert(change.otherPath, items.take(change.path));
        break;
    case Kind::Remove:
        items.remove(change.path);
        break;
    case Kind::Truncate:
    case Kind::Write:
    case Kind::Sync:
        break;
    }
}

QByteArray Disk::bytesOfFile(const File& file, Bytes bytes)
{
    QByteArray result = bytes == Bytes::Written ? file.now : file.synced;
    const qsizetype missing = file.now.size() - file.synced.size();
    if (bytes == Bytes::Half && missing > 0)
        result += file.now.mid(file.synced.size(), missing / 2);
    else if (bytes == Bytes::Zeros && missing > 0)
        result += QByteArray(missing, '\0');
    return result.isNull() ? QByteArray("") : result;
}

Disk::Image Disk::image(int names, int without, Bytes bytes) const
{
    Items items = m_items;
    int number = 0;
    for (const NameChange& name : m_names) {
        const bool isThere = name.isSettled || (number < names && number != without);
        number += name.isSettled ? 0 : 1;
        if (isThere)
            apply(name, items);
    }
    Image image;
    // In the order of paths a folder comes before what is in it.
    for (auto item = items.constBegin(); item != items.constEnd(); ++item) {
        const bool isRoot = m_items.contains(item.key()) && !m_items.value(item.key()).file;
        if (isRoot || image.contains(folderOf(item.key())))
            image.insert(item.key(), item->file ? bytesOfFile(*item->file, bytes) : QByteArray());
    }
    return image;
}

} // namespace torture
