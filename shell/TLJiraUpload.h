#pragma once

#include "platform/foundation/Export.h"
#include "shell/SessionWindowController.h"
#include "upload/JAUploadBodyViewController.h"

#include <QString>

#include <memory>
#include <optional>

/// The window in which the host's user attaches the host's document to an issue.
///
///     QTemporaryDir folder;
///     const QString copy = folder.filePath(QStringLiteral("copy"));
///     if (QFile::copy(document, copy)) {
///         const auto upload = TLJiraUpload::initWithName(name, copy);
///         upload->showWindow();
///         QApplication::exec();
///     }
///
/// **When an upload ends, well or not, the folder that holds the file is removed with everything in it.** Never hand in
/// the user's own file: hand in a copy that lies alone in a temporary folder of its own, and remove the folder yourself
/// where nothing was sent.
///
/// The first controller that a user ever makes logs out, so that no session of an earlier installation is taken over.
class TL_EXPORT TLJiraUpload : public SessionWindowController
{
public:
    /// Without a document: `name` and `path` are to be set before the window is loaded.
    static std::shared_ptr<TLJiraUpload> init();

    /// Takes over as the client's delegate; the window is loaded when it is first shown. `name` is what the user sees
    /// and the attachment is called.
    static std::shared_ptr<TLJiraUpload> initWithName(const std::optional<QString>& name,
                                                      const std::optional<QString>& path);

    /// The panel below the header; never null.
    std::shared_ptr<JAUploadBodyViewController> bodyViewController() const { return m_bodyViewController; }

    ///@{
    /// What the document is called. The panel takes it over with setDownloadViews().
    std::optional<QString> name() const { return m_name; }
    void setName(const std::optional<QString>& name) { m_name = name; }
    ///@}

    /// Also tells the body which document it is about.
    void setDownloadViews() override;

private:
    TLJiraUpload() = default;

    std::shared_ptr<JAUploadBodyViewController> m_bodyViewController;
    std::optional<QString> m_name;
};
