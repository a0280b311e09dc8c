#include "platform/toolkit/nib/Actions.h"

#include "platform/toolkit/windows/Retained.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QSet>

namespace tljira {

namespace {

QString actionNameOf(const QWidget* control)
{
    return control->property("action").toString();
}

QList<QWidget*> withDescendants(const QList<QWidget*>& views)
{
    QList<QWidget*> all;
    for (QWidget* view : views) {
        all.append(view);
        all.append(view->findChildren<QWidget*>());
    }
    return all;
}

/// False for a view that can send nothing.
bool connectControl(QWidget* control, const QObject* context, const std::function<void()>& send)
{
    if (auto* button = qobject_cast<QAbstractButton*>(control))
        return QObject::connect(button, &QAbstractButton::clicked, context, send);
    if (auto* field = qobject_cast<QLineEdit*>(control))
        return QObject::connect(field, &QLineEdit::returnPressed, context, send);
    return false;
}

} // namespace

Actions::Actions()
    : m_context(std::make_unique<QObject>())
{
}

Actions::~Actions() = default;

void Actions::bind(const char* name, Action action)
{
    m_actions[QString::fromLatin1(name)] = std::move(action);
}

void Actions::bind(const char* name, std::function<void()> action)
{
    bind(name, [run = std::move(action)](QWidget*) { run(); });
}

Actions::Missing Actions::connectTo(const QList<QWidget*>& topLevelViews, const std::weak_ptr<void>& owner)
{
    Missing missing;
    QSet<QString> used;
    for (QWidget* control : withDescendants(topLevelViews)) {
        const QString name = actionNameOf(control);
        if (name.isEmpty())
            continue;
        const auto found = m_actions.find(name);
        if (found == m_actions.end()) {
            missing.undeclared.append(name);
            continue;
        }
        const bool isConnected = connectControl(control, m_context.get(), [owner, action = found->second, control] {
            // An action may run an event loop of its own, which is not the turn that counts.
            const std::shared_ptr<void> kept = owner.lock();
            action(control);
            retainUntilNextTurn(kept);
        });
        if (isConnected)
            used.insert(name);
    }
    missing.undeclared.removeDuplicates();
    for (const auto& [name, action] : m_actions) {
        if (!used.contains(name))
            missing.unused.append(name);
    }
    return missing;
}

} // namespace tljira
