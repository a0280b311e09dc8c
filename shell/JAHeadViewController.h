#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/views/ImageView.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/windows/ViewController.h"
#include "records/JAUser.h"

#include <QByteArray>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class JALoginWindow;

/// The strip that shows who is logged in, and on which server; while the server is asked, it says so. Before that it
/// offers to log in, in a sheet of the window it stands in.
class TL_EXPORT JAHeadViewController : public tljira::ViewController
{
public:
    /// Loads nothing yet. Without a bundle the file is the host's.
    static std::shared_ptr<JAHeadViewController> initWithNibName(const QString& name,
                                                                 const std::optional<tljira::Bundle>& bundle);

    ///@{
    /// An outlet; null until the view is loaded.
    /// Shown while somebody is logged in; holds labels and avatar, and fills the header.
    tljira::Outlet<QWidget> okSessionView{outlets, "okSessionView"};
    tljira::Outlet<tljira::ProgressIndicator> findSessionProgressIndicator{outlets, "findSessionProgressIndicator"};
    tljira::Outlet<tljira::ImageView> avatarImage{outlets, "avatarImage"};
    tljira::Outlet<QLabel> nameLabel{outlets, "nameLabel"};
    tljira::Outlet<QLabel> displayNameLabel{outlets, "displayNameLabel"};
    tljira::Outlet<QLabel> emailLabel{outlets, "emailLabel"};
    ///@}

    /// The form of the login sheet; null until the view is loaded.
    std::shared_ptr<JALoginWindow> jaLoginWindow() const { return m_jaLoginWindow; }

    /// Hides `okSessionView`, then shows `view`. What `okSessionView` covers is hidden while it is shown.
    void setActualView(QWidget* view);

    /// Shows the panel and asks the server whose session it is; without a session it does nothing. Where the server
    /// does not say, the labels become empty. Of several answers that for the last call counts.
    void setOkSessionView();

    /// Fetches the avatar. Without an answer it stays as it is; an answer that is no picture clears it. Pictures are
    /// decoded off the main thread. An answer that comes when another avatar has been asked for since is left out.
    void setAvatarByURL(const std::optional<QString>& url);

    /// Begins the sheet with the login form; after a login the panel shows whose session it is. The form's Cancel ends
    /// the sheet with ModalResponse::Cancel. Nothing happens where the header stands in no window.
    void loginAction();
    /// Ends the session. Labels and avatar stay: the client's delegate shows that the session is over.
    void logOutAction();

protected:
    void viewDidLoad() override;
    void viewWillLayout() override;

private:
    JAHeadViewController();

    void showUser(const std::shared_ptr<const JAUser>& user);
    void makeRoomForPanel();
    void showLookUp();
    void showServer();
    void showPlaceholder();
    void showAvatar(const QByteArray& bytes, quint64 number);
    void endSheetAtCancel();

    std::shared_ptr<JALoginWindow> m_jaLoginWindow;
    QMetaObject::Connection m_cancelConnection;
    ///@{
    /// Count the questions, so that an answer that takes long does not cover that to a later one.
    quint64 m_newestAvatar = 0;
    quint64 m_newestLookUp = 0;
    ///@}
    /// Under way, of who is logged in.
    int m_lookUps = 0;
};
