#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace tljira {

/// What is drawn behind a view and its subviews: a background, and a border inside the view's edges. It goes with its
/// view, leaves the styling of the subviews alone, and costs a view without one nothing.
class Layer : public QObject
{
    Q_OBJECT

public:
    /// The view's layer; null if it has none, or there is no view.
    static Layer* layerOf(const QWidget* view);

    /// Gives the view a layer unless it has one. Null only for no view.
    static Layer* wantLayer(QWidget* view);

    std::optional<QColor> backgroundColor() const { return m_backgroundColor; }
    std::optional<QColor> borderColor() const { return m_borderColor; }
    double cornerRadius() const { return m_cornerRadius; }
    double borderWidth() const { return m_borderWidth; }
    bool isShade() const { return m_isShade; }

    /// Without a colour nothing is drawn.
    void setBackgroundColor(const std::optional<QColor>& color);
    void setBorderColor(const std::optional<QColor>& color);

    /// Points; negative values count as 0.
    void setCornerRadius(double radius);
    void setBorderWidth(double width);

    /// A shade dims what its view lies on. It is not drawn while a sheet covers the view, which dims the window itself:
    /// nothing is dimmed twice.
    void setIsShade(bool isShade);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit Layer(QWidget* view);

    void paint(QWidget* view) const;
    void update();

    std::optional<QColor> m_backgroundColor;
    std::optional<QColor> m_borderColor;
    double m_cornerRadius = 0;
    double m_borderWidth = 0;
    bool m_isShade = false;
};

} // namespace tljira
