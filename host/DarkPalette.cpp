#include "host/DarkPalette.h"

#include <QColor>

namespace tessaloom {

QPalette darkPalette()
{
    const QColor window(0x2B, 0x2D, 0x30);
    const QColor base(0x1E, 0x1F, 0x22);
    const QColor button(0x3A, 0x3D, 0x41);
    const QColor text(0xE4, 0xE6, 0xEA);
    const QColor faint(0x9A, 0x9F, 0xA8);
    const QColor disabled(0x6F, 0x74, 0x7D);
    const QColor accent(0x3D, 0x7E, 0xD9);

    QPalette palette(text, button, button.lighter(140), base.darker(120), button.darker(120), text, Qt::white, base,
                     window);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, button);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, accent.lighter(130));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, button);
    return palette;
}

} // namespace tessaloom
