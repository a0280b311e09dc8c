#include "client/tasks/FileDocument.h"

#include <QFile>

#include <stdexcept>

namespace client {

namespace {

std::runtime_error exceptionOf(const QString& reason)
{
    return std::runtime_error(reason.toLocal8Bit().toStdString());
}

class FileWriter
{
public:
    explicit FileWriter(const QString& path)
        : m_path(path)
    {
    }

    bool operator()(QIODevice& device) const
    {
        QFile file(m_path);
        if (!file.open(QFile::ReadOnly | QFile::Unbuffered))
            throw exceptionOf(file.errorString());
        const qint64 size = file.size();
        QByteArray piece(pieceSize, Qt::Uninitialized);
        qint64 copied = 0;
        // Not until atEnd(): that goes by a size, which some files do not have.
        while (const qint64 length = file.read(piece.data(), piece.size())) {
            if (length < 0)
                throw exceptionOf(file.errorString());
            if (device.write(piece.constData(), length) != length)
                return false;
            copied += length;
        }
        if (copied < size)
            throw exceptionOf(QStringLiteral("The file became shorter while it was being read."));
        return true;
    }

private:
    static constexpr qsizetype pieceSize = 1 << 20;

    QString m_path;
};

} // namespace

TLJiraDocument FileDocument::of(const QString& name, const QString& path)
{
    return {name, FileWriter(path)};
}

bool FileDocument::isWrittenByHost(const TLJiraDocument& document)
{
    return document.writer && !document.writer.target<FileWriter>();
}

} // namespace client
