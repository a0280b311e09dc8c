#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/windows/WindowController.h"
#include "records/JALoginObject.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include <memory>
#include <optional>

/// The form in which the user names the server and logs in. It stands either inside another window, to which `view` was
/// moved, or in its own window as a sheet; as a sheet it ends itself with ModalResponse::OK after a login.
///
/// It names what the host chose (TLJiraOptions): an API token in place of a password, and where its user makes one.
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
    tljira::Outlet<QWidget> view{outlets, "view"};
    tljira::Outlet<QLineEdit> hostTextField{outlets, "hostTextField"};
    tljira::Outlet<QLineEdit> emailTextField{outlets, "emailTextField"};
    tljira::Outlet<QLineEdit> passwordTextField{outlets, "passwordTextField"};
    /// Why the last login failed. Stays until the next failure, through successes as well.
    tljira::Outlet<QLabel> errorLabel{outlets, "errorLabel"};
    tljira::Outlet<QPushButton> loginButton{outlets, "loginButton"};
    tljira::Outlet<QPushButton> cancelButton{outlets, "cancelButton"};
    tljira::Outlet<tljira::ProgressIndicator> spiner{outlets, "spiner"};
    ///@}

    /// Takes what stands in the fields, unchecked, saves the server's address and logs in.
    void loginButtonAction();

    /// Ends, with ModalResponse::Cancel, the sheet that the window holding this form as a child window is. Does nothing
    /// where that window is no sheet.
    void cancelAction();

    /// Shows why there is no session, as after a login that failed.
    void showError(const tljira::Error& error);

protected:
    void windowDidLoad() override;

private:
    JALoginWindow();

    void showOptions();
    void fillInAddress();
    void setIsLoggingIn(bool isLoggingIn);
    void loginEnded(const std::shared_ptr<const JALoginObject>& result, const std::optional<tljira::Error>& error);
    void askForPasswordAgain();
};
