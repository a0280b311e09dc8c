#pragma once

#include <QString>

class QWidget;

namespace tljira {

// The loader's side of ViewClasses.h.

/// Null if no such class is registered.
QWidget* makeRegisteredView(const QString& className, QWidget* parent);

void announceLoadedView(QWidget* view);

} // namespace tljira
