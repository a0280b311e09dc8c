#include "platform/toolkit/views/PushButton.h"

#include "platform/toolkit/views/PaletteColors.h"

#include <QStyleOptionButton>

#include <algorithm>

namespace tljira {

namespace {

constexpr QSize leastSize(88, 30);
constexpr int roomAboveAndBelow = 7;
constexpr int roomBesides = 14;

/// Styles draw a button lighter than its colour, in parts.
constexpr int lighterInParts = 145;
constexpr double readable = 4.5;

/// Styles draw a button paler than its colour.
QColor brighter(const QColor& color)
{
    return QColor::fromHsvF(std::max(color.hsvHueF(), 0.0F), std::min(color.hsvSaturationF() * 1.3F, 1.0F),
                            color.valueF());
}

/// The highlight colour, darker if its text could not be read on it otherwise.
QColor fillFor(const QColor& own, const QColor& text)
{
    const QColor highlight = brighter(own);
    QColor fill = highlight;
    for (int percent = 105; percent < 250 && contrast(fill.lighter(lighterInParts), text) < readable; percent += 5)
        fill = highlight.darker(percent);
    return fill;
}

void highlight(QPalette& palette)
{
    const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
    const bool isTextLight = text.lightness() > 128;
    const QColor own = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor fill = isTextLight ? fillFor(own, text) : own;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Button, fill);
        palette.setColor(group, QPalette::ButtonText, text);
    }
    const QColor faded = mixed(fill, palette.color(QPalette::Active, QPalette::Window), 0.45);
    palette.setColor(QPalette::Disabled, QPalette::Button, faded);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, mixed(text, faded, 0.8));
}

} // namespace

PushButton::PushButton(QWidget* parent)
    : QPushButton(parent)
{
}

QSize PushButton::sizeHint() const
{
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    const QSize roomy(text.width() + 2 * roomBesides, fontMetrics().height() + 2 * roomAboveAndBelow);
    const QSize least(isFlat() ? 0 : leastSize.width(), leastSize.height());
    return QPushButton::sizeHint().expandedTo(roomy).expandedTo(least);
}

void PushButton::initStyleOption(QStyleOptionButton* option) const
{
    QPushButton::initStyleOption(option);
    if (!isDefault() || isFlat())
        return;
    highlight(option->palette);
#ifndef Q_OS_MACOS
    // With it styles mix the colour with others.
    option->features &= ~QStyleOptionButton::DefaultButton;
#endif
}

} // namespace tljira
