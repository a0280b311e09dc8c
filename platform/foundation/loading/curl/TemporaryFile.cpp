#include "platform/foundation/loading/curl/TemporaryFile.h"

#include "platform/foundation/files/Leftovers.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QUuid>

namespace tljira {

TemporaryFile::~TemporaryFile()
{
    m_file.close();
    if (!path().isEmpty())
        QFile::remove(path());
}

bool TemporaryFile::open()
{
    const QString name = QStringLiteral("Download_%1.tmp").arg(QUuid::createUuid().toString(QUuid::Id128));
    m_file.setFileName(appendingPathComponent(temporaryDirectory(), name));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                     QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return fail(false);
    static_cast<void>(m_sign.lockExisting(QFile::encodeName(path()).toStdString()));
    return true;
}

void TemporaryFile::removeLeftovers()
{
    tljira::removeLeftovers(temporaryDirectory(), [](const QString& name) {
        return name.startsWith(QLatin1String("Download_")) && name.endsWith(QLatin1String(".tmp"));
    });
}

bool TemporaryFile::write(const char* bytes, qint64 count)
{
    while (count > 0) {
        const qint64 written = m_file.write(bytes, count);
        if (written <= 0)
            return fail(m_file.error() == QFileDevice::ResourceError);
        bytes += written;
        count -= written;
    }
    return true;
}

bool TemporaryFile::close()
{
    m_file.close();
    return m_file.error() == QFileDevice::NoError || fail(m_file.error() == QFileDevice::ResourceError);
}

bool TemporaryFile::fail(bool isFull)
{
    m_error = makeFileError(isFull ? FileError::WriteOutOfSpace : FileError::WriteUnknown,
                            isFull ? QStringLiteral("The download couldn’t be saved because the disk is full.")
                                   : QStringLiteral("The download couldn’t be saved: %1").arg(m_file.errorString()));
    return false;
}

} // namespace tljira
