#pragma once

#include "client/JAControllerDelegate.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/windows/ViewController.h"
#include "platform/toolkit/windows/WindowController.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class JAHeadViewController;
class JALoginWindow;

/// What the entry controllers with a session have in common: a window, "JMWindowController", that shows a login form
/// while the session is invalid, and an account header above a body panel while it is valid. The controller learns
/// which as the client's delegate, which it stays after its window has closed, until another controller takes over.
///
/// The window checks the saved session when it is loaded. Until the outcome is known it shows what its interface file
/// puts into `view`: on which server it looks, and a button that gives up. A delegate call that comes before the window
/// is loaded changes nothing on screen.
///
/// A subclass's factory calls initWithNib(), then initSession():
///
///     self->initWithNib();
///     self->initSession([&](const auto& bundle) { return self->m_bodyViewController = makeBody(bundle); });
class TL_EXPORT SessionWindowController : public tljira::WindowController, public JAControllerDelegate
{
public:
    ~SessionWindowController() override;

    ///@{
    /// An outlet; null until the window is loaded.
    tljira::Outlet<QWidget> headView{outlets, "headView"};
    tljira::Outlet<QWidget> bodyView{outlets, "bodyView"};
    tljira::Outlet<QWidget> loginViewContainer{outlets, "loginViewContainer"};
    /// The window's content: holds one of the two containers at a time.
    tljira::Outlet<QWidget> view{outlets, "view"};
    /// Holds `headView` and `bodyView`.
    tljira::Outlet<QWidget> downloadViewContainer{outlets, "downloadViewContainer"};
    ///@}

    ///@{
    /// The account header and the login form; never null.
    std::shared_ptr<JAHeadViewController> headViewController() const { return m_headViewController; }
    std::shared_ptr<JALoginWindow> jaLoginWindow() const { return m_jaLoginWindow; }
    ///@}

    ///@{
    /// The host's document.
    std::optional<QString> path() const { return m_path; }
    void setPath(const std::optional<QString>& path) { m_path = path; }
    ///@}

    /// Puts the login form into its container, which takes the form's size.
    void setLoginViews();
    /// Puts header and body into their places.
    virtual void setDownloadViews();
    /// Makes `container` all that the window shows. The window takes the container's size, with animation; its upper
    /// right corner moves outwards by the size of the window's decorations at every call.
    void setActualView(QWidget* container);

    /// Gives up waiting for the saved session to be checked: ends the sheet that the window is with
    /// ModalResponse::Cancel, or closes the window.
    void cancelAction();

    /// Makes the Cancel buttons of login form and body close the window. By themselves they only end a sheet that it
    /// is; this is for a window that stands alone.
    void closeOnCancel();

    /// Shows header and body, and fills the header.
    void jaValidSession() override;
    /// Shows the login form; the header keeps what it shows.
    void jaInvalidSession() override;
    /// Shows in the form that a keyring goes on holding what the user wanted out of it.
    void jaControlleLogoutCompletion(bool success, const std::optional<tljira::Error>& error) override;

    /// Ends the modal run, if one is going. Transfers go on.
    void windowWillClose(tljira::Window& window) override;

protected:
    /// Makes the panel below the header, from the framework's bundle.
    using BodyMaker =
        std::function<std::shared_ptr<tljira::ViewController>(const std::optional<tljira::Bundle>& bundle)>;

    /// The subclass's factory goes on with initWithNib() and initSession().
    SessionWindowController();

    /// Loads nothing yet.
    void initWithNib();

    /// Makes the login form, takes over as the client's delegate, then makes body and header.
    void initSession(const BodyMaker& makeBody);

    void windowDidLoad() override;

private:
    void showThatSessionIsLookedFor();
    void useOneWidth();
    void showKeyringProblem(const std::optional<tljira::Error>& error);

    std::shared_ptr<JALoginWindow> m_jaLoginWindow;
    std::shared_ptr<tljira::ViewController> m_body;
    std::shared_ptr<JAHeadViewController> m_headViewController;
    std::optional<QString> m_path;
};
