#pragma once

#include "platform/foundation/os/FileLock.h"
#include "platform/foundation/values/Error.h"

#include <QFile>

#include <optional>

namespace tljira {

/// The file that a download is written to. It is removed with this object unless somebody moved it away.
class TemporaryFile
{
public:
    TemporaryFile() = default;
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// False when the disk refuses; `error` then says why.
    bool open();
    bool write(const char* bytes, qint64 count);
    bool close();

    /// Removes those that killed processes left more than a day ago.
    static void removeLeftovers();

    QString path() const { return m_file.fileName(); }
    const std::optional<Error>& error() const { return m_error; }

private:
    bool fail(bool isFull);

    QFile m_file;
    /// Tells other processes that the file has an owner.
    os::FileLock m_sign;
    std::optional<Error> m_error;
};

} // namespace tljira
