#pragma once

#include "download/JABodyViewController.h"
#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlet.h"
#include "platform/toolkit/windows/WindowController.h"
#include "shell/JAHeadViewController.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

/// The older window: the account header above a panel that chooses a file and lists the attachments of an issue. It has
/// no login form and does not check the session.
///
/// The interface files of its panels, "JABodyViewController" and "JAHeadViewController", come from the host's own
/// bundle: the host embeds them with the prefix "main".
class TL_EXPORT JAWindowController : public tljira::WindowController
{
public:
    /// Never called; see run().
    using RunCallBack = std::function<void(const std::optional<QString>& path)>;

    /// Without a file. Loads nothing yet.
    static std::shared_ptr<JAWindowController> init();
    /// `path` becomes the client's file.
    static std::shared_ptr<JAWindowController> initWithPath(const std::optional<QString>& path);

    /// Does nothing: the host runs the window.
    void run(const RunCallBack& callBack);

    /// Ends the modal run, if one is going.
    void windowWillClose(tljira::Window& window) override;

    ///@{
    /// An outlet; null until the window is loaded.
    tljira::Outlet<QWidget> headView{outlets, "headView"};
    tljira::Outlet<QWidget> bodyView{outlets, "bodyView"};
    ///@}

    ///@{
    /// Made when the window is loaded; null before.
    std::shared_ptr<JAHeadViewController> headViewController() const { return m_headViewController; }
    std::shared_ptr<JABodyViewController> bodyViewController() const { return m_bodyViewController; }
    ///@}

    /// What initWithPath() was given; nothing after init().
    std::optional<QString> pathFile() const { return m_pathFile; }

    ///@{
    /// An object of the host, not owned; null by itself once it is gone. The elements of the list in its property
    /// "pages" are logged when the window is loaded.
    QObject* tmpFile() const { return m_tmpFile; }
    void setTmpFile(QObject* file) { m_tmpFile = file; }
    ///@}

protected:
    void windowDidLoad() override;

private:
    JAWindowController();

    static std::shared_ptr<JAWindowController> make();

    void logPages() const;

    std::shared_ptr<JAHeadViewController> m_headViewController;
    std::shared_ptr<JABodyViewController> m_bodyViewController;
    std::optional<QString> m_pathFile;
    QPointer<QObject> m_tmpFile;
};
