#include "platform/foundation/values/Data.h"

#include "platform/foundation/files/PathString.h"
#include "platform/foundation/os/CachedRead.h"
#include "platform/foundation/os/FileStamp.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <cstring>
#include <mutex>

namespace tljira {

/// Readers share the file and its position, hence the lock around each read.
class Data::OpenFile
{
public:
    explicit OpenFile(const QString& path)
        : m_file(path)
    {
    }

    bool open()
    {
        if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return false;
        m_stamp = os::stampOfFile(m_file.handle());
        return m_stamp.has_value();
    }

    qint64 size() const { return m_stamp->size; }

    /// Whether nobody has written to the file since it was opened, as far as the file system tells.
    bool isUnchanged() const { return os::stampOfFile(m_file.handle()) == m_stamp; }

    qint64 readAt(qint64 position, char* buffer, qint64 capacity)
    {
        const std::lock_guard lock(m_mutex);
        if (m_file.pos() != position && !m_file.seek(position))
            return -1;
        return m_file.read(buffer, std::min(capacity, size() - position));
    }

    /// Takes no lock, which another reader may hold while it waits for the disk. Moves no position either.
    qint64 readCachedAt(qint64 position, char* buffer, qint64 capacity)
    {
        return os::readCached(m_file.handle(), position, buffer, std::min(capacity, size() - position));
    }

    Error shortenedError() const
    {
        return errorOf(QStringLiteral("The file “%1” became shorter or unreadable while it was being read."));
    }

    /// When it is not unchanged.
    Error changedError() const
    {
        if (!os::stampOfFile(m_file.handle()))
            return shortenedError();
        return errorOf(QStringLiteral("The file “%1” was changed while it was being read."));
    }

private:
    Error errorOf(const QString& text) const
    {
        return makeFileError(FileError::ReadUnknown, text.arg(lastPathComponent(m_file.fileName())));
    }

    QFile m_file;
    std::optional<os::FileStamp> m_stamp;
    std::mutex m_mutex;
};

Data::Data(QByteArray bytes)
    : m_size(bytes.size())
{
    if (m_size > 0)
        m_pieces.emplace_back(std::move(bytes));
}

std::optional<Data> Data::contentsOfFile(const QString& path)
{
    // Opening a pipe would wait for somebody to write to it.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    auto file = std::make_shared<OpenFile>(path);
    if (!file->open())
        return std::nullopt;
    Data data;
    data.m_size = file->size();
    if (data.m_size > 0)
        data.m_pieces.emplace_back(std::move(file));
    return data;
}

qint64 Data::sizeOf(const Piece& piece)
{
    if (const auto* bytes = std::get_if<QByteArray>(&piece))
        return bytes->size();
    return std::get<std::shared_ptr<OpenFile>>(piece)->size();
}

Data& Data::append(const Data& other)
{
    const std::vector<Piece> added = other.m_pieces;
    m_pieces.insert(m_pieces.end(), added.begin(), added.end());
    m_size += other.m_size;
    return *this;
}

std::optional<QByteArray> Data::bytes() const
{
    if (m_pieces.empty())
        return QByteArray();
    if (m_pieces.size() == 1 && std::holds_alternative<QByteArray>(m_pieces.front()))
        return std::get<QByteArray>(m_pieces.front());

    QByteArray all(m_size, Qt::Uninitialized);
    DataReader reader(*this);
    for (qint64 position = 0; position < m_size;) {
        const qint64 count = reader.read(all.data() + position, m_size - position);
        if (count <= 0)
            return std::nullopt;
        position += count;
    }
    return all;
}

std::optional<QString> Data::utf8Text() const
{
    const std::optional<QByteArray> all = bytes();
    if (!all)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(*all);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

DataReader::DataReader(Data data)
    : m_data(std::move(data))
{
}

qint64 DataReader::read(char* buffer, qint64 capacity)
{
    return fill(buffer, capacity, Wait::ForDisk);
}

qint64 DataReader::readWithoutWaiting(char* buffer, qint64 capacity)
{
    return fill(buffer, capacity, Wait::Never);
}

qint64 DataReader::fill(char* buffer, qint64 capacity, Wait wait)
{
    qint64 filled = 0;
    while (filled < capacity && m_piece < m_data.m_pieces.size()) {
        const Data::Piece& piece = m_data.m_pieces[m_piece];
        const qint64 count = readFromPiece(piece, buffer + filled, capacity - filled, wait);
        if (count == mustWait && filled > 0)
            break;
        if (count < 0)
            return count;
        filled += count;
        m_offset += count;
        if (m_offset == Data::sizeOf(piece)) {
            ++m_piece;
            m_offset = 0;
        }
    }
    return filled;
}

qint64 DataReader::readFromPiece(const Data::Piece& piece, char* buffer, qint64 capacity, Wait wait)
{
    if (const auto* bytes = std::get_if<QByteArray>(&piece)) {
        const qint64 count = std::min<qint64>(capacity, bytes->size() - m_offset);
        std::memcpy(buffer, bytes->constData() + m_offset, static_cast<std::size_t>(count));
        return count;
    }
    return readFromFile(*std::get<std::shared_ptr<Data::OpenFile>>(piece), buffer, capacity, wait);
}

qint64 DataReader::readFromFile(Data::OpenFile& file, char* buffer, qint64 capacity, Wait wait)
{
    const qint64 count =
        wait == Wait::Never ? file.readCachedAt(m_offset, buffer, capacity) : file.readAt(m_offset, buffer, capacity);
    if (wait == Wait::Never && count == 0)
        return mustWait;
    if (count <= 0)
        m_error = file.shortenedError();
    else if (m_offset + count == file.size() && !file.isUnchanged())
        m_error = file.changedError();
    return m_error ? -1 : count;
}

bool DataReader::filesAreUnchanged()
{
    for (const Data::Piece& piece : m_data.m_pieces) {
        const auto* file = std::get_if<std::shared_ptr<Data::OpenFile>>(&piece);
        if (!file || (*file)->isUnchanged())
            continue;
        m_error = (*file)->changedError();
        return false;
    }
    return true;
}

} // namespace tljira
