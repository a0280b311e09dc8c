#pragma once

#include "client/JAControllerDelegate.h"
#include "download/JAListAttachedFilesWindow.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/ProgressIndicator.h"
#include "platform/toolkit/ViewController.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
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
    QLabel* pathLabel() const { return m_pathLabel; }
    QLineEdit* keyTextField() const { return m_keyTextField; }
    QPushButton* uploadButton() const { return m_uploadButton; }
    QPushButton* openFileButton() const { return m_openFileButton; }
    tljira::ProgressIndicator* spinerView() const { return m_spinerView; }
    QWidget* uploadView() const { return m_uploadView; }
    QWidget* checkFileView() const { return m_checkFileView; }
    QWidget* containerView() const { return m_containerView; }
    QLineEdit* keyDownloadTextField() const { return m_keyDownloadTextField; }
    QWidget* checkDownloadFiles() const { return m_checkDownloadFiles; }
    QWidget* downloadWrapper() const { return m_downloadWrapper; }
    QWidget* receivingAttachmentsView() const { return m_receivingAttachmentsView; }
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
    QPointer<QLabel> m_pathLabel;
    QPointer<QLineEdit> m_keyTextField;
    QPointer<QPushButton> m_uploadButton;
    QPointer<QPushButton> m_openFileButton;
    QPointer<tljira::ProgressIndicator> m_spinerView;
    QPointer<QWidget> m_uploadView;
    QPointer<QWidget> m_checkFileView;
    QPointer<QWidget> m_containerView;
    QPointer<QLineEdit> m_keyDownloadTextField;
    QPointer<QWidget> m_checkDownloadFiles;
    QPointer<QWidget> m_downloadWrapper;
    QPointer<QWidget> m_receivingAttachmentsView;
    std::optional<QString> m_pathFile;
    std::shared_ptr<JAListAttachedFilesWindow> m_jaListAttachedWindow;
};
