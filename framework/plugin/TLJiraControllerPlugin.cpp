#include "framework/plugin/TLJiraControllerPlugin.h"

#include "framework/TLJiraController.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "upload/DocumentFolder.h"

#include <QFile>

#include <memory>
#include <stdexcept>

namespace {

/// A file that the host has handed over. When the window has gone, so has the folder that holds it, unless its user
/// never pressed Upload.
class HandedOver
{
public:
    explicit HandedOver(const QString& path)
        : m_path(path)
    {
    }

    bool writeInto(QIODevice& device)
    {
        m_wasSent = true;
        QFile file(m_path);
        if (!file.open(QFile::ReadOnly))
            throw std::runtime_error(file.errorString().toLocal8Bit().toStdString());
        constexpr qint64 pieceSize = 1 << 20;
        while (!file.atEnd()) {
            const QByteArray piece = file.read(pieceSize);
            if (piece.isEmpty() || device.write(piece) != piece.size())
                return false;
        }
        return file.error() == QFile::NoError;
    }

    void jobHasEnded() const
    {
        const auto folder = m_wasSent ? folderToRemove(m_path) : std::nullopt;
        if (folder)
            tljira::FileManager::removeItemAtPath(*folder);
    }

private:
    const QString m_path;
    bool m_wasSent = false;
};

} // namespace

bool TLJiraControllerPlugin::attach(const QString& name, const QString& path)
{
    const auto file = std::make_shared<HandedOver>(path);
    const auto write = [file](QIODevice& device) { return file->writeInto(device); };
    return TLJiraJobs::attach({name, write}, nullptr, [file](const TLJiraJobs::Result&) { file->jobHasEnded(); });
}

QString TLJiraControllerPlugin::fetch()
{
    const auto result = TLJiraJobs::fetchAndWait(nullptr);
    return result ? result->path : QString();
}

void TLJiraControllerPlugin::setRoutes(const QStringList& routes)
{
    tljira::URLSessionConfiguration::setDefaultRoutes(routes);
}

void TLJiraControllerPlugin::setLogEnabled(bool enabled)
{
    tljira::setLogEnabled(enabled);
}
