#pragma once

#include "platform/foundation/Error.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/ProgressIndicator.h"
#include "platform/toolkit/WindowController.h"
#include "records/JALoginObject.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <memory>
#include <optional>

/// The form in which the user names the server and logs in. It stands either inside another window, to which `view` was
/// moved, or in its own window as a sheet; as a sheet it ends itself with ModalResponse::OK after a login.
///
/// The address that is saved when the window is loaded is filled in. While a login runs, the fields are read only. An
/// error makes the window higher, if need be.
class TL_EXPORT JALoginWindow : public tljira::WindowController
{
public:
    /// Loads nothing yet.
    static std::shared_ptr<JALoginWindow> init();

    ///@{
    /// An outlet; null until the window is loaded.
    QWidget* view() const { return m_view; }
    QLineEdit* hostTextField() const { return m_hostTextField; }
    QLineEdit* emailTextField() const { return m_emailTextField; }
    QLineEdit* passwordTextField() const { return m_passwordTextField; }
    /// Why the last login failed. Stays until the next failure, through successes as well.
    QLabel* errorLabel() const { return m_errorLabel; }
    QPushButton* loginButton() const { return m_loginButton; }
    QPushButton* cancelButton() const { return m_cancelButton; }
    tljira::ProgressIndicator* spiner() const { return m_spiner; }
    ///@}

    /// Takes what stands in the fields, unchecked, saves the server's address and logs in.
    void loginButtonAction();

    /// Ends, with ModalResponse::Cancel, the sheet that the window holding this form as a child window is. Does nothing
    /// where that window is no sheet.
    void cancelAction();

protected:
    void windowDidLoad() override;

private:
    JALoginWindow();

    void fillInAddress();
    void setIsLoggingIn(bool isLoggingIn);
    void loginEnded(const std::shared_ptr<const JALoginObject>& result, const std::optional<tljira::Error>& error);
    void showError(const tljira::Error& error);
    void askForPasswordAgain();

    QPointer<QWidget> m_view;
    QPointer<QLineEdit> m_hostTextField;
    QPointer<QLineEdit> m_emailTextField;
    QPointer<QLineEdit> m_passwordTextField;
    QPointer<QLabel> m_errorLabel;
    QPointer<QPushButton> m_loginButton;
    QPointer<QPushButton> m_cancelButton;
    QPointer<tljira::ProgressIndicator> m_spiner;
};
