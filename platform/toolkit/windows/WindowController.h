#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/NibOwner.h"
#include "platform/toolkit/windows/Window.h"
#include "platform/toolkit/windows/WindowDelegate.h"

#include <QString>

#include <memory>
#include <optional>

namespace tljira {

/// Owns a window that comes from an interface file, and is its delegate. A subclass declares its outlets and actions in
/// its (non-public) constructor and hands itself out from a static factory:
///
///     std::shared_ptr<JALoginWindow> JALoginWindow::init()
///     {
///         const std::shared_ptr<JALoginWindow> self(new JALoginWindow);
///         self->initWithWindowNibName(QStringLiteral("JALoginWindow"), bundle);
///         return self;
///     }
class TL_EXPORT WindowController : public NibOwner, public WindowDelegate
{
public:
    ~WindowController() override;

    /// The first call loads: windowWillLoad(), the file, windowDidLoad(). Inside windowDidLoad() it answers the window.
    /// A file that is missing or broken gives an empty window. Null only before initWithWindowNibName().
    std::shared_ptr<Window> window();
    /// Whether window() has loaded; true already inside windowDidLoad().
    bool isWindowLoaded() const { return m_window != nullptr; }

    /// Loads if need be, and brings the window to the front.
    virtual void showWindow();

    /// Null until the window is loaded.
    std::shared_ptr<Window> windowIfLoaded() const { return m_window; }

protected:
    /// The subclass's factory goes on with initWithWindowNibName().
    WindowController() = default;

    /// Loads nothing yet. Without a bundle the file is the host's (Bundle::mainBundle()).
    void initWithWindowNibName(const QString& name, const std::optional<Bundle>& bundle = std::nullopt);

    /// Once, before the file is read; no outlet is connected.
    virtual void windowWillLoad() {}
    /// Once, when the window is there, hidden, and outlets and actions are connected.
    virtual void windowDidLoad() {}

private:
    std::shared_ptr<Window> m_window;
    bool m_isLoading = false;
};

} // namespace tljira
