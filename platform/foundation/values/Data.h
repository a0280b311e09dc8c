#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace tljira {

/// Immutable bytes as a rope: each piece lies in memory or is an open file. Copies and joins share the
/// pieces, so a body that holds a file of gigabytes costs no more memory than one that holds a line. A piece of a file
/// is read when it is asked for, from the file that was opened, also when its name is removed or given to another file
/// meanwhile. A file that somebody writes to after it was opened cannot be read to its end any more: what came of it
/// would be neither the old file nor the new one.
class TL_EXPORT Data
{
public:
    /// No bytes.
    Data() = default;
    /// Shares the array's memory.
    Data(QByteArray bytes);

    /// The bytes of the file, as many as it holds at this moment. Nothing when it cannot be opened for reading or is no
    /// regular file.
    static std::optional<Data> contentsOfFile(const QString& path);

    /// Bytes; those of a file count as they were when it was opened.
    qint64 size() const { return m_size; }
    /// Whether there is not one byte.
    bool isEmpty() const { return m_size == 0; }

    /// Adds the pieces of `other`, which may be this object, without copying their bytes.
    Data& append(const Data& other);

    /// All bytes in one piece of memory; nothing when a file no longer gives what it held or was written to.
    std::optional<QByteArray> bytes() const;
    /// The bytes as text; nothing when they are not UTF-8.
    std::optional<QString> utf8Text() const;

private:
    friend class DataReader;

    class OpenFile;
    using Piece = std::variant<QByteArray, std::shared_ptr<OpenFile>>;

    static qint64 sizeOf(const Piece& piece);

    std::vector<Piece> m_pieces;
    qint64 m_size = 0;
};

/// Reads a Data from front to back. A reader is used by one thread at a time; any number of readers, also of the same
/// file, may be used by several threads at once.
class TL_EXPORT DataReader
{
public:
    /// Begins at the first byte. Keeps the pieces, and with them their files, until it is destroyed.
    explicit DataReader(Data data);

    /// Fills up to `capacity` bytes and returns their number, 0 at the end, -1 when a file gives fewer bytes than it
    /// held when it was opened, or when its last byte is read and it was written to meanwhile; `error` then says which.
    qint64 read(char* buffer, qint64 capacity);

    /// What `readWithoutWaiting` answers when it has nothing, although the end has not come.
    static constexpr qint64 mustWait = -2;

    /// As `read`, but never waits for a disk: gives what lies in memory, which a file that was just written does as a
    /// rule, or `mustWait`. What is wrong with a file `read` has to find out.
    qint64 readWithoutWaiting(char* buffer, qint64 capacity);

    /// Looks at the files once more. False when one was written to since it was opened; `error` then says which.
    bool filesAreUnchanged();

    /// What was wrong with a file: CocoaErrorDomain, FileError::ReadUnknown. Nothing before.
    const std::optional<Error>& error() const { return m_error; }

private:
    enum class Wait { ForDisk, Never };

    qint64 fill(char* buffer, qint64 capacity, Wait wait);
    qint64 readFromPiece(const Data::Piece& piece, char* buffer, qint64 capacity, Wait wait);
    qint64 readFromFile(Data::OpenFile& file, char* buffer, qint64 capacity, Wait wait);

    Data m_data;
    /// The piece to read from next, and how much of it is read.
    std::size_t m_piece = 0;
    qint64 m_offset = 0;
    std::optional<Error> m_error;
};

} // namespace tljira
