#include "platform/toolkit/Outlets.h"

namespace platform {

namespace {

QWidget* findView(const QString& name, const QList<QWidget*>& topLevelViews)
{
    for (QWidget* view : topLevelViews) {
        if (view->objectName() == name)
            return view;
        if (auto* found = view->findChild<QWidget*>(name))
            return found;
    }
    return nullptr;
}

} // namespace

QStringList Outlets::connectTo(const QList<QWidget*>& topLevelViews) const
{
    QStringList missing;
    for (const Entry& entry : m_entries) {
        if (!entry.set(findView(entry.name, topLevelViews)))
            missing.append(entry.name);
    }
    return missing;
}

} // namespace platform
