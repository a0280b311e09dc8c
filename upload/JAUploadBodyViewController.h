#pragma once

#include "client/JAControllerDelegate.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/windows/ViewController.h"
#include "upload/JAUploadingWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <deque>
#include <memory>
#include <optional>

/// The panel in which the user names an issue and sends the document to it.
///
/// When an upload has ended, well or not, the folder that holds the file is removed with everything in it. The file has
/// to lie alone in a folder made for the purpose. After an upload that went well the panel says so, and after one that
/// failed it says, in the place of the document's name, that there is nothing left to send; its Cancel reads Close
/// then. In a window of TLJiraJobs, which provides a private copy for each upload, the panel removes nothing and goes
/// on showing the document.
///
/// An upload goes on, and its folder is removed, also when the panel's window closes and its owner lets go of it
/// meanwhile. Everything is called on the main thread.
class TL_EXPORT JAUploadBodyViewController : public tljira::ViewController, public JAControllerDelegate
{
public:
    /// Loads nothing yet. Without a bundle the file is the host's.
    static std::shared_ptr<JAUploadBodyViewController> initWithNibName(const QString& name,
                                                                       const std::optional<tljira::Bundle>& bundle);
    ~JAUploadBodyViewController() override;

    ///@{
    /// An outlet; null until the view is loaded.
    tljira::Outlet<QPushButton> cancelButton{outlets, "cancelButton"};
    tljira::Outlet<QWidget> containerView{outlets, "containerView"};
    /// Where the user chooses a file.
    tljira::Outlet<QWidget> checkFileView{outlets, "checkFileView"};
    /// Where the user names the issue; what is shown first.
    tljira::Outlet<QWidget> uploadView{outlets, "uploadView"};
    tljira::Outlet<QPushButton> openFileButton{outlets, "openFileButton"};
    tljira::Outlet<QPushButton> uploadFileButton{outlets, "uploadFileButton"};
    /// Shows the file's name.
    tljira::Outlet<QLabel> pathLabel{outlets, "pathLabel"};
    /// The key.
    tljira::Outlet<QLineEdit> taskTextField{outlets, "taskTextField"};
    tljira::Outlet<QLabel> percentLabel{outlets, "percentLabel"};
    tljira::Outlet<QProgressBar> indication{outlets, "indication"};
    /// Dims the panel while it cannot be used.
    tljira::Outlet<QWidget> shadow{outlets, "shadow"};
    ///@}

    ///@{
    /// What the next upload sends.
    std::optional<QString> filePath() const;
    void setFilePath(const std::optional<QString>& path);
    ///@}
    ///@{
    /// What the file is called here and at the server.
    std::optional<QString> fileName() const;
    void setFileName(const std::optional<QString>& name);
    ///@}
    ///@{
    /// What the newest upload sends: `filePath` as it was when the upload began; in a window of TLJiraJobs its copy.
    std::optional<QString> zipFilePath() const;
    void setZipFilePath(const std::optional<QString>& path);
    ///@}

    ///@{
    /// The sheet that shows how uploads go; one for all of them.
    std::shared_ptr<JAUploadingWindow> jaUploadingWindow() const { return m_jaUploadingWindow; }
    void setJaUploadingWindow(const std::shared_ptr<JAUploadingWindow>& window) { m_jaUploadingWindow = window; }
    ///@}

    /// Names the document: sets `filePath` and `fileName`, and shows the name.
    void setNewPathFile(const std::optional<QString>& path, const std::optional<QString>& fileName);

    /// Shows `view`, one of `uploadView` and `checkFileView`, and hides the other.
    void setUploadActualView(QWidget* view);

    /// Lets the user choose a file.
    void openFileAction();
    /// Sends the file to the issue whose key stands in `taskTextField`, as it stands there; without a key it does
    /// nothing. While an earlier upload of the panel has not ended, this one waits for that: the earlier one's end
    /// removes a folder.
    void uploadFileAction();
    /// From the first press of the button until the last upload has ended, whether the window is open or not.
    bool isUploading() const;
    /// Ends the sheet that the panel's window is; nothing where it is none.
    void cancelAction();

    /// Shows a message and waits until the user has seen it.
    void alert(const QString& title, const QString& message);

    /// Makes the panel usable.
    void jaValidSession() override;
    /// Makes it unusable and dims it.
    void jaInvalidSession() override;

    /// All files below a folder, at any depth, relative to it.
    QStringList getRelativePath(const QString& folder) const;

protected:
    void viewDidLoad() override;
    void viewWillLayout() override;

private:
    JAUploadBodyViewController();

    struct Upload;
    struct Provider;
    enum class DocumentIs { There, Gone, Attached };

    void lookForDocument();
    void showDocumentSize(const std::optional<qint64>& size);
    void showDocumentIs(DocumentIs state, const QString& key = QString());
    void showUploadingWindow(const std::shared_ptr<Upload>& upload);
    void sheetDidEnd(const std::shared_ptr<Upload>& upload, int returnCode);
    void beginNextUpload();
    bool startUpload(const std::shared_ptr<Upload>& upload, const Provider& provider);
    void showStart(const Upload& upload);
    void showWhatIsLeftOf(const Upload& upload);
    void showProgress(qint64 bytesSent, qint64 bytesExpected);
    void uploadEnded(Upload& upload, const std::optional<tljira::Error>& error);
    void removeFolder();
    void showError(const Upload& upload, const tljira::Error& error);

    std::shared_ptr<JAUploadingWindow> m_jaUploadingWindow;
    /// In the order in which they were asked for. The first is under way.
    std::deque<std::shared_ptr<Upload>> m_uploads;
    DocumentIs m_documentIs = DocumentIs::There;

    struct Document;
    const std::unique_ptr<Document> m_document;
};
