#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLatin1String>
#include <QObject>
#include <QString>

namespace tljira {

/// Screen readers meet views of the class as `Interface` says, which is made from a `View*`. Once per process.
template <class View, class Interface>
void installAccessible()
{
    // Asked for each class of an object, from its own to the most general one.
    const QAccessible::InterfaceFactory make = [](const QString& className, QObject* object) -> QAccessibleInterface* {
        if (className != QLatin1String(View::staticMetaObject.className()))
            return nullptr;
        auto* const view = qobject_cast<View*>(object);
        return view ? new Interface(view) : nullptr;
    };
    static const bool once = (QAccessible::installFactory(make), true);
    static_cast<void>(once);
}

} // namespace tljira
