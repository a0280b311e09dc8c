#pragma once

#include "client/JAControllerDelegate.h"
#include "download/JAListAttachedFilesWindow.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/windows/ViewController.h"

#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

/// The panel in which the user names an issue and gets a document of it. It ends the modal run, and closes its window,
/// when the list of documents is left after a download.
class TL_EXPORT JADownloadBodyViewController : public tljira::ViewController, public JAControllerDelegate
{
public:
    /// See the list window.
    using Attachments = JAListAttachedFilesWindow::Attachments;

    /// Loads nothing yet.
    static std::shared_ptr<JADownloadBodyViewController> initWithNibName(const QString& name,
                                                                         const std::optional<tljira::Bundle>& bundle);

    ///@{
    /// The list window's `path` when its sheet last ended; nothing before that or before the first download.
    std::optional<QString> path() const { return m_path; }
    void setPath(const std::optional<QString>& path) { m_path = path; }
    ///@}

    /// Fetches the issue and shows its documents, newest first, as a sheet. Nothing happens if there is no such issue
    /// or no answer.
    void getAttachAction();

    /// Those that are documents of the host (TLJiraOptions::documents), in the same order.
    static Attachments filteredAttachments(const Attachments& attachments);

    /// Uncovers the panel.
    void jaValidSession() override;
    /// Covers the panel and disables it.
    void jaInvalidSession() override;

    ///@{
    /// An outlet; null until the view is loaded.
    tljira::Outlet<QLineEdit> issueKeyTextField{outlets, "issueKeyTextField"};
    tljira::Outlet<QPushButton> getAttachButton{outlets, "getAttachButton"};
    /// Covers the panel while it cannot be used.
    tljira::Outlet<QWidget> shadow{outlets, "shadow"};
    ///@}
    /// Made when the view is loaded; null before.
    std::shared_ptr<JAListAttachedFilesWindow> jaListAttachedWindow() const { return m_jaListAttachedWindow; }

protected:
    void viewDidLoad() override;

private:
    JADownloadBodyViewController();

    void showAttachments(const QString& key, const Attachments& attachments);
    void cancel();
    void sheetDidEnd();

    std::optional<QString> m_path;
    class Hint;
    std::shared_ptr<Hint> m_lookUpHint;
    std::shared_ptr<JAListAttachedFilesWindow> m_jaListAttachedWindow;
};
