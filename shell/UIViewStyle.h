#pragma once

#include "platform/foundation/Export.h"

#include <QColor>
#include <QWidget>

#include <optional>

/// Background, border and rounded corners for any view, set by interface files in the dynamic properties
/// "tBackgroundColor", "tBorderColor" (colours), "tBorderRadius" and "tBorderThickness" (whole points). They belong to
/// the view's layer, which the first of them gives it.
namespace UIViewStyle {

///@{
/// What the dynamic property of that name sets; lengths are in points. A null view is a quiet no-op; without a colour
/// the layer draws none.
TL_EXPORT void setTBackgroundColor(QWidget* view, const std::optional<QColor>& color);
TL_EXPORT void setTBorderColor(QWidget* view, const std::optional<QColor>& color);
TL_EXPORT void setTBorderRadius(QWidget* view, qint64 points);
TL_EXPORT void setTBorderThickness(QWidget* view, qint64 points);
///@}

/// From now on every view that an interface file brings is styled by its properties. Called by whoever loads interface
/// files; later calls do nothing.
TL_EXPORT void styleLoadedViews();

} // namespace UIViewStyle
