#pragma once

#include "tests/torture/ChangeLog.h"

#include <QMap>

#include <array>
#include <memory>

namespace torture {

/// What may stand on a disk after a power cut: what was waited for (fsync) is there, anything else may be.
class Disk
{
public:
    /// What became of bytes that nobody has waited for.
    enum class Bytes { Written, Lost, Half, Zeros };
    static constexpr std::array everyBytes = {Bytes::Written, Bytes::Lost, Bytes::Half, Bytes::Zeros};

    /// Files by path; a folder has a null array.
    using Image = QMap<QString, QByteArray>;

    /// Everything below these folders is on the disk already.
    explicit Disk(const QStringList& roots);

    void apply(const LoggedChange& change);

    /// How many changes of names nobody has waited for.
    int unsettledNames() const;
    /// The first `names` of these are on the disk, and when `without` is one of them, that one is not.
    Image image(int names, int without, Bytes bytes) const;

private:
    struct File
    {
        QByteArray now;
        QByteArray synced;
    };
    struct NameChange
    {
        LoggedChange change;
        std::shared_ptr<File> file; ///< null for a folder, and where the file is known by its name
        bool isSettled = false;
    };
    struct Item
    {
        std::shared_ptr<File> file; ///< null: a folder
    };
    using Items = QMap<QString, Item>;

    std::shared_ptr<File> fileOf(quint64 inode) const { return m_files.value(inode); }
    void sync(const LoggedChange& change);
    static void apply(const NameChange& change, Items& items);
    static QByteArray bytesOfFile(const File& file, Bytes bytes);

    Items m_items;
    QMap<quint64, std::shared_ptr<File>> m_files;
    std::vector<NameChange> m_names;
};

} // namespace torture
