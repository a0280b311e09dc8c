#include "platform/toolkit/nib/Outlets.h"

namespace tljira {

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

QString withClasses(const QString& name, const char* needed, const QWidget* found)
{
    return QStringLiteral("%1 (a %2 is needed, found a %3)")
        .arg(name, QLatin1String(needed), QLatin1String(found->metaObject()->className()));
}

} // namespace

QStringList Outlets::connectTo(const QList<QWidget*>& topLevelViews) const
{
    QStringList missing;
    for (const Entry& entry : m_entries) {
        QWidget* view = findView(entry.name, topLevelViews);
        if (!entry.set(view))
            missing.append(view ? withClasses(entry.name, entry.className, view) : entry.name);
    }
    return missing;
}

} // namespace tljira
