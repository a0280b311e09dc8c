#pragma once

#include <QByteArray>
#include <QDir>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

class JAWindowController;
class TLJiraUpload;

namespace tessaloom {

/// All that this program asks of the framework: the three jobs that a user can start. One object serves the program for
/// as long as it runs.
class JiraJobs
{
public:
    /// Opens the window in which the user attaches the document to an issue, and returns at once. The bytes are copied;
    /// the document's own file is never touched. Answers what went wrong, or nothing.
    std::optional<QString> upload(const QString& name, const QByteArray& bytes);

    /// Lets the user fetch a document of an issue and returns when the window has closed, with the document's place in
    /// the folder, or nothing. The file is the caller's; none that was there is replaced.
    std::optional<QString> download(const QDir& folder);

    /// Opens the older window, which does both.
    void showClassic(const QString& path, const QStringList& pages);

private:
    std::shared_ptr<TLJiraUpload> m_upload;
    std::shared_ptr<JAWindowController> m_classic;
    /// What the older window knows of the document: its property "pages".
    QObject m_document;
    /// Of the newest window. An upload that ends removes the folder; what was never sent goes with the next window or
    /// with the program.
    std::unique_ptr<QTemporaryDir> m_copy;
};

} // namespace tessaloom
