#include "platform/toolkit/PushButton.h"

#include "platform/toolkit/PaletteColors.h"

#include <QStyleOptionButton>

namespace tljira {

namespace {

constexpr QSize leastSize(88, 30);
constexpr int roomAboveAndBelow = 7;
constexpr int roomBesides = 14;

void highlight(QPalette& palette)
{
    const QColor fill = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
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
    if (isDefault() && !isFlat())
        highlight(option->palette);
}

} // namespace tljira
