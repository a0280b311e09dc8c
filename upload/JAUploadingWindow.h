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

    /// Shows progress, also after an error. The bar stays between 1 and its maximum. `otherInfo` is shown beside it.
    void setUploadingState(qint64 percent, const QString& otherInfo);
    /// Shows the error's text instead of the progress.
    void setErrorState(const tljira::Error& error);
    /// Says "DONE" where the size stood and changes nothing else: after an error, the error stays in sight.
    void setSuccessState();

    /// Cancels the client's newest upload, if it is still going, and ends the sheet with ModalResponse::Cancel.
    void cancelAction();

protected:
    void windowDidLoad() override;

private:
    JAUploadingWindow();

    void setIsRunning(bool isRunning);
    void nameButton(const char* name);

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
};
