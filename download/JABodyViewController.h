#pragma once

#include "client/JAControllerDelegate.h"
#include "download/JAListAttachedFilesWindow.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/windows/ViewController.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

/// The panel of the older window: an area that chooses a file for the client to upload, and one that shows all
/// attachments of an issue.
class TL_EXPORT JABodyViewController : public tljira::ViewController, public JAControllerDelegate
{
public:
    /// Loads nothing yet.
    static std::shared_ptr<JABodyViewController> initWithNibName(const QString& name,
                                                                 const std::optional<tljira::Bundle>& bundle);

    /// The file that was chosen last, or handed in.
    std::optional<QString> pathFile() const { return m_pathFile; }
    /// Only keeps the path.
    void setPathFile(const std::optional<QString>& path) { m_pathFile = path; }
    /// Shows the path, keeps it and makes it the client's file.
    void setPathfile(const std::optional<QString>& path);

    /// Lets the user choose a file. Returns when that is over.
    void openFileAction();
    /// Shows the uploading view, for good. Sends nothing.
    void uploadAction();
    /// Fetches the issue and shows all its attachments, in the server's order, as a sheet. The list keeps the rows that
    /// it already shows. Nothing happens if there is no such issue or no answer.
    void getListAttachedFilesAction();

    /// Shows one of `uploadView` and `checkFileView` and hides the other.
    void setUploadActualView(QWidget* view);
    /// Shows one of `checkDownloadFiles` and `receivingAttachmentsView` and hides the other.
    void setDownloadActualView(QWidget* view);

    /// Returns when the user has seen the alert.
    void errorMessage(const QString& text);

    ///@{
    /// The session decides over the upload button only.
    void jaValidSession() override;
    void jaInvalidSession() override;
    ///@}

    ///@{
    /// An outlet; null until the view is loaded.
    tljira::Outlet<QLabel> pathLabel{outlets, "pathLabel"};
    tljira::Outlet<QLineEdit> keyTextField{outlets, "keyTextField"};
    tljira::Outlet<QPushButton> uploadButton{outlets, "uploadButton"};
    tljira::Outlet<QPushButton> openFileButton{outlets, "openFileButton"};
    tljira::Outlet<tljira::ProgressIndicator> spinerView{outlets, "spinerView"};
    tljira::Outlet<QWidget> uploadView{outlets, "uploadView"};
    tljira::Outlet<QWidget> checkFileView{outlets, "checkFileView"};
    tljira::Outlet<QWidget> containerView{outlets, "containerView"};
    tljira::Outlet<QLineEdit> keyDownloadTextField{outlets, "keyDownloadTextField"};
    tljira::Outlet<QWidget> checkDownloadFiles{outlets, "checkDownloadFiles"};
    tljira::Outlet<QWidget> downloadWrapper{outlets, "downloadWrapper"};
    tljira::Outlet<QWidget> receivingAttachmentsView{outlets, "receivingAttachmentsView"};
    ///@}
    /// Made when the view is loaded; null before.
    std::shared_ptr<JAListAttachedFilesWindow> jaListAttachedWindow() const { return m_jaListAttachedWindow; }

protected:
    void viewDidLoad() override;

private:
    JABodyViewController();

    void followFocus();
    void showAttachments(const JAIssueObject& issue);

    class Hint;
    std::shared_ptr<Hint> m_lookUpHint;
    std::optional<QString> m_pathFile;
    std::shared_ptr<JAListAttachedFilesWindow> m_jaListAttachedWindow;
};
