#pragma once

#include "platform/foundation/Export.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <map>
#include <memory>

namespace tljira {

/// What the controls of an interface file can ask their owner to do. A control names its action in its dynamic property
/// "action"; a button sends it when clicked, a text field when Return is pressed in it. Several controls may share an
/// action.
///
///     actions.bind("loginButtonAction", [this] { … });
///     actions.bind("downloadAction", [this](QWidget* sender) { … });
///
/// An action may release its owner's last reference: the owner lives until the event that brought the action is done.
class TL_EXPORT Actions
{
public:
    /// What a control asks for; it gets the control.
    using Action = std::function<void(QWidget* sender)>;

    Actions();
    ~Actions();

    ///@{
    /// Declares an action, before the interface file is loaded. It runs on the main thread, each time a control of the
    /// file sends it.
    void bind(const char* name, Action action);
    void bind(const char* name, std::function<void()> action);
    ///@}

    /// What the owner and its file disagree about.
    struct Missing
    {
        QStringList undeclared; ///< named by controls of the file, but not bound; each once
        QStringList unused;     ///< bound, but named by no control of the file
    };

    /// Connects the controls among these views and below them. The connections end with this object.
    Missing connectTo(const QList<QWidget*>& topLevelViews, const std::weak_ptr<void>& owner);

private:
    std::map<QString, Action> m_actions;
    std::unique_ptr<QObject> m_context;
};

} // namespace tljira
