#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/windows/WindowController.h"

#include <QLabel>
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
    tljira::Outlet<QWidget> containerView{outlets, "containerView"};
    tljira::Outlet<QWidget> uploadingView{outlets, "uploadingView"};
    tljira::Outlet<QWidget> errorView{outlets, "errorView"};
    /// Laid out, but never shown.
    tljira::Outlet<QWidget> successView{outlets, "successView"};
    tljira::Outlet<QLabel> errortitle{outlets, "errortitle"};
    tljira::Outlet<QLabel> errorMessage{outlets, "errorMessage"};
    tljira::Outlet<QProgressBar> uploadingProgressBar{outlets, "uploadingProgressBar"};
    tljira::Outlet<QLabel> sizeLabel{outlets, "sizeLabel"};
    /// "Cancel" while an upload is going; "Close", and the default button, after it.
    tljira::Outlet<QPushButton> cancelButton{outlets, "cancelButton"};
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

    std::optional<bool> m_isRunning;
    const std::unique_ptr<Progress> m_progress;
};
