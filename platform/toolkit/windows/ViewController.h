#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/NibOwner.h"
#include "platform/toolkit/windows/Window.h"

#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>
#include <optional>

namespace tljira {

/// Owns a view that comes from an interface file. Built like WindowController: a subclass declares its outlets and
/// actions in its constructor, its factory calls initWithNibName().
class TL_EXPORT ViewController : public NibOwner
{
public:
    ~ViewController() override;

    /// The first call loads the file, then runs viewDidLoad() once. A file that is missing or broken gives an empty
    /// view. Null if the window that the view was moved into is gone. Its windowTitle is the file's: what a window
    /// around it may be called.
    QWidget* view();
    /// Whether view() has loaded; true already inside viewDidLoad().
    bool isViewLoaded() const { return m_isLoaded; }

    /// The window that the view stands in, or null; does not load the view.
    std::shared_ptr<Window> window() const { return Window::windowOf(m_view); }

    ///@{
    /// Free for the controller's user.
    QVariant representedObject() const { return m_representedObject; }
    void setRepresentedObject(const QVariant& object) { m_representedObject = object; }
    ///@}

protected:
    /// The subclass's factory goes on with initWithNibName().
    ViewController();

    /// Loads nothing yet. Without a bundle the file is the host's (Bundle::mainBundle()).
    void initWithNibName(const QString& name, const std::optional<Bundle>& bundle);

    /// Once, when the view is there and outlets and actions are connected.
    virtual void viewDidLoad() {}

    /// Before the view is laid out: when it is about to be shown, when it has a new size, when its content asks for
    /// layout.
    virtual void viewWillLayout() {}

private:
    class LayoutWatch;

    QPointer<QWidget> m_view;
    std::unique_ptr<LayoutWatch> m_layoutWatch;
    QVariant m_representedObject;
    bool m_isLoaded = false;
};

} // namespace tljira
