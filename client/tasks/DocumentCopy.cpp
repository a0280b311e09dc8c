#include "client/tasks/DocumentCopy.h"

#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/files/Leftovers.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QFile>

#include <exception>

namespace client {

namespace {

const QLatin1String prefix("Upload-");
/// Of a folder that nobody has locked yet.
const QLatin1String newPrefix("NewUpload-");

constexpr auto readAndWrite = QFile::ReadOwner | QFile::WriteOwner;

/// Where a disk has room for a part of what is written, QFile writes that, and reports it in the count alone.
class WholeFile : public QFile
{
public:
    using QFile::QFile;

    /// What kept it from being written, if anything did.
    std::optional<QString> problem()
    {
        if (!m_problem && (error() != NoError || (isOpen() && !flush())))
            m_problem = reason();
        return m_problem;
    }

protected:
    qint64 writeData(const char* data, qint64 length) override
    {
        qint64 written = 0;
        while (written < length) {
            const qint64 part = QFile::writeData(data + written, length - written);
            if (part <= 0) {
                // A writer that goes on would make QFile forget it.
                m_problem = reason();
                return -1;
            }
            written += part;
        }
        return written;
    }

private:
    /// The system says why when it is asked for the rest.
    QString reason()
    {
        if (isOpen())
            flush();
        return errorString();
    }

    std::optional<QString> m_problem;
};

/// Answers what went wrong, in the words of who knows best.
std::optional<QString> contentsInto(WholeFile& file, const TLJiraDocument& document)
{
    bool isWritten = false;
    QString reason;
    try {
        isWritten = document.writer ? document.writer(file) : file.write(document.bytes) == document.bytes.size();
    } catch (const std::exception& exception) {
        reason = QString::fromLocal8Bit(exception.what());
    } catch (...) {
    }
    if (auto problem = file.problem())
        return problem;
    return isWritten ? std::nullopt : std::optional(reason);
}

void removeLeftovers()
{
    const QString parent = tljira::temporaryDirectory();
    tljira::removeLeftovers(
        parent, [](const QString& name) { return name.startsWith(prefix); }, std::chrono::hours(0));
    tljira::removeLeftovers(parent, [](const QString& name) { return name.startsWith(newPrefix); });
}

} // namespace

QString DocumentCopy::path() const
{
    return m_folder.pathOf(QStringLiteral("document"));
}

std::optional<QString> DocumentCopy::write(const TLJiraDocument& document)
{
    auto problem = m_folder.create(tljira::temporaryDirectory(), newPrefix);
    if (!problem)
        problem = m_folder.rename(prefix);
    if (problem)
        return problem->localizedDescription();
    WholeFile file(path());
    if (!file.open(QFile::ReadWrite | QFile::NewOnly))
        return file.errorString();
    file.setPermissions(readAndWrite);
    return contentsInto(file, document);
}

void DocumentCopy::tidyOnce()
{
    [[maybe_unused]] static const bool hasTidied = [] {
        tljira::GlobalQueue::instance().addOperation(removeLeftovers);
        return true;
    }();
}

} // namespace client
