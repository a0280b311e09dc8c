#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace tljira {

using ViewMaker = std::function<QWidget*(QWidget* parent)>;
using ViewObserver = std::function<void(QWidget* view)>;

/// Lets interface files contain views of a class of ours: `className` is what Designer calls the promoted class.
/// A class of the same name replaces the earlier one. The toolkit's own views are always known.
void registerViewClass(const QString& className, ViewMaker maker);

template <class View>
void registerViewClass(const QString& className)
{
    registerViewClass(className, [](QWidget* parent) -> QWidget* { return new View(parent); });
}

/// `observer` is called on the main thread for every view that any interface file brings, once, after all properties of
/// the file are set and before outlets are connected; table cells are included. Observers stay for the life of the
/// process.
void observeLoadedViews(ViewObserver observer);

} // namespace tljira
