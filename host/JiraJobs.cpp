#include "host/JiraJobs.h"

#include "framework/TLJiraController.h"

#include <QFile>
#include <QFileInfo>

namespace tessaloom {

namespace {

/// Moves the file out of the framework's folder, which the next download of any program empties, to the first name that
/// is free. Answers its new place, or nothing if it could not be moved.
std::optional<QString> moveInto(const QDir& folder, const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    QString place = folder.filePath(name);
    for (int number = 2; QFileInfo::exists(place); ++number)
        place = folder.filePath(QStringLiteral("%1 %2").arg(number).arg(name));
    return QFile::rename(path, place) ? std::optional(place) : std::nullopt;
}

} // namespace

std::optional<QString> JiraJobs::upload(const QString& name, const QByteArray& bytes)
{
    if (m_upload && m_upload->bodyViewController()->isUploading()) {
        m_upload->showWindow();
        return std::nullopt;
    }

    // When an upload ends, the framework removes the folder of the file: it gets a copy, alone in a folder of its own.
    auto folder = std::make_unique<QTemporaryDir>();
    QFile copy(folder->filePath(name));
    if (!copy.open(QFile::WriteOnly) || copy.write(bytes) != bytes.size() || !copy.flush())
        return copy.errorString();

    if (m_upload)
        m_upload->window()->close();
    m_copy = std::move(folder);
    m_upload = TLJiraUpload::initWithName(name, copy.fileName());
    m_upload->window()->setTitle(QObject::tr("Upload to Jira"));
    m_upload->closeOnCancel();
    m_upload->showWindow();
    return std::nullopt;
}

std::optional<QString> JiraJobs::download(const QDir& folder)
{
    const auto window = JMWindowController::init();
    window->window()->setTitle(QObject::tr("Open from Jira"));
    window->closeOnCancel();

    std::optional<QString> document;
    window->run([&](const std::optional<QString>& path) {
        // A download that was cancelled leaves the name of a file that is not there.
        if (path && QFileInfo::exists(*path))
            document = moveInto(folder, *path);
    });
    return document;
}

void JiraJobs::showClassic(const QString& path, const QStringList& pages)
{
    m_document.setProperty("pages", pages);
    m_classic = JAWindowController::initWithPath(path);
    m_classic->setTmpFile(&m_document);
    m_classic->showWindow();
}

} // namespace tessaloom
