#include "shell/UIViewStyle.h"

#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/views/Layer.h"

#include <QVariant>

namespace UIViewStyle {

namespace {

/// The view's layer, which it is given now unless it has one.
tljira::Layer* checkedLayer(QWidget* view)
{
    return tljira::Layer::wantLayer(view);
}

std::optional<QColor> colorIn(const QVariant& value)
{
    const auto color = value.value<QColor>();
    return color.isValid() ? std::optional(color) : std::nullopt;
}

template <typename Setter>
void applyProperty(QWidget* view, const char* name, Setter set)
{
    const QVariant value = view->property(name);
    if (value.isValid())
        set(value);
}

void applyProperties(QWidget* view)
{
    applyProperty(view, "tBackgroundColor",
                  [view](const QVariant& value) { setTBackgroundColor(view, colorIn(value)); });
    applyProperty(view, "tBorderColor", [view](const QVariant& value) { setTBorderColor(view, colorIn(value)); });
    applyProperty(view, "tBorderRadius", [view](const QVariant& value) { setTBorderRadius(view, value.toLongLong()); });
    applyProperty(view, "tBorderThickness",
                  [view](const QVariant& value) { setTBorderThickness(view, value.toLongLong()); });
}

} // namespace

void setTBackgroundColor(QWidget* view, const std::optional<QColor>& color)
{
    if (tljira::Layer* layer = checkedLayer(view))
        layer->setBackgroundColor(color);
}

void setTBorderColor(QWidget* view, const std::optional<QColor>& color)
{
    if (tljira::Layer* layer = checkedLayer(view))
        layer->setBorderColor(color);
}

void setTBorderRadius(QWidget* view, qint64 points)
{
    if (tljira::Layer* layer = checkedLayer(view))
        layer->setCornerRadius(static_cast<double>(points));
}

void setTBorderThickness(QWidget* view, qint64 points)
{
    if (tljira::Layer* layer = checkedLayer(view))
        layer->setBorderWidth(static_cast<double>(points));
}

void styleLoadedViews()
{
    static const bool isObserving = [] {
        tljira::observeLoadedViews(applyProperties);
        return true;
    }();
    Q_UNUSED(isObserving)
}

} // namespace UIViewStyle
