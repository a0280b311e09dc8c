#pragma once

#include "platform/foundation/Export.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

namespace tljira {

/// The views of an interface file that their owner wants to reach, by object name. An owner declares each as an Outlet.
class TL_EXPORT Outlets
{
public:
    /// Declares an outlet, before the interface file is loaded. The pointer has to live as long as this object. It is
    /// set when the file is loaded and becomes null again when its view goes. A view that is missing, or of another
    /// class, leaves it null.
    template <class View>
    void bind(const char* name, QPointer<View>* outlet)
    {
        m_entries.push_back({QString::fromLatin1(name), View::staticMetaObject.className(), [outlet](QWidget* view) {
                                 *outlet = dynamic_cast<View*>(view);
                                 return !outlet->isNull();
                             }});
    }

    /// Sets every outlet from these views and what is below them. Those that stayed empty come back in order of
    /// binding: the name, and in brackets the two classes if a view of that name is of another class.
    QStringList connectTo(const QList<QWidget*>& topLevelViews) const;

private:
    struct Entry
    {
        QString name;
        const char* className;
        std::function<bool(QWidget*)> set;
    };
    std::vector<Entry> m_entries;
};

} // namespace tljira
