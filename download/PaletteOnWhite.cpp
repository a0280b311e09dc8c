#include "download/PaletteOnWhite.h"

namespace {

constexpr QRgb buttonGrey = 0xffefefef;
constexpr QRgb secondaryText = 0xff5c5c5c;

} // namespace

QPalette paletteOnWhite(const QPalette& application)
{
    QPalette palette(QColor::fromRgb(buttonGrey), Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor::fromRgb(secondaryText));
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
        palette.setColor(QPalette::All, role, application.color(QPalette::Active, role));
    return palette;
}
