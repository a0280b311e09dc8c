#pragma once

#include "platform/foundation/Error.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/WindowController.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

/// The sheet that shows how an upload goes and how it ended. One window serves all uploads of a panel; what it showed
/// last stays until the next call.
class TL_EXPORT JAUploadingWindow : public tljira::WindowController
{
public:
    /// Loads nothing yet.
    static std::shared_ptr<JAUploadingWindow> init();
    ~JAUploadingWindow() override;

    ///@{
    /// An outlet; null until the window is loaded.
    QWidget* containerView() const { return m_containerView; }
    QWidget* uploadingView() const { return m_uploadingView; }
    QWidget* errorView() const { return m_errorView; }
    /// Laid out, but never shown.
    QWidget* successView() const { return m_successView; }
    QLabel* errortitle() const { return m_errortitle; }
    QLabel* errorMessage() const { return m_errorMessage; }
    QProgressBar* uploadingProgressBar() const { return m_uploadingProgressBar; }
    QLabel* sizeLabel() const { return m_sizeLabel; }
    /// "Cancel" while an upload is going; "Close", and the default button, after it.
    QPushButton* cancelButton() const { return m_cancelButton; }
    ///@}

    /// Shows one of the three views and hides the others.
    void setActualView(QWidget* view);

    /// Names the document that is sent and the issue that it goes to, from now on. The upload begins at this moment.
    void setDocument(const QString& name, const QString& key);
    /// So many bytes have been sent: says how many percent of `expected` that is, how fast it goes and how long it will
    /// take, and that the server is waited for when all are sent.
    void setSent(qint64 sent, qint64 expected);

    /// Shows progress, also after an error. The bar stays between 1 and its maximum. `otherInfo` is shown beside it.
    void setUploadingState(qint64 percent, const QString& otherInfo);
    /// Shows the error's text instead of the progress; below it what the server said itself, if the error's user info
    /// is its answer and has a text under "errorMessages" or "errors", and what the user can do.
    void setErrorState(const tljira::Error& error);
    /// Says "DONE" where the size stood, and beside it where the document is now. After an error, the error stays in
    /// sight.
    void setSuccessState();

    /// Cancels the client's newest upload, if it is still going, and ends the sheet with ModalResponse::Cancel.
    void cancelAction();

protected:
    void windowDidLoad() override;

private:
    JAUploadingWindow();

    struct Progress;

    void setIsRunning(bool isRunning);
    void nameView(const char* name);
    void showRate(const QString& words);
    void showRateBesideSize();

    QPointer<QWidget> m_containerView;
    QPointer<QWidget> m_uploadingView;
    QPointer<QWidget> m_errorView;
    QPointer<QWidget> m_successView;
    QPointer<QLabel> m_errortitle;
    QPointer<QLabel> m_errorMessage;
    QPointer<QProgressBar> m_uploadingProgressBar;
    QPointer<QLabel> m_sizeLabel;
    QPointer<QPushButton> m_cancelButton;
    std::optional<bool> m_isRunning;
    const std::unique_ptr<Progress> m_progress;
};
