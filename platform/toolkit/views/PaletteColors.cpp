#include "platform/toolkit/views/PaletteColors.h"

#include <algorithm>
#include <cmath>

namespace tljira {

namespace {

constexpr double readable = 4.6;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor background(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::Window);
}

QColor foreground(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::WindowText);
}

/// The one of both that can be read better.
QColor fitting(const QPalette& palette, const QColor& onLight, const QColor& onDark)
{
    const QColor behind = background(palette);
    return contrast(onLight, behind) >= contrast(onDark, behind) ? onLight : onDark;
}

} // namespace

double contrast(const QColor& color, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(color), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& color, const QColor& other, double part)
{
    const auto channel = [part](float one, float two) { return static_cast<float>(part * one + (1 - part) * two); };
    return QColor::fromRgbF(channel(color.redF(), other.redF()), channel(color.greenF(), other.greenF()),
                            channel(color.blueF(), other.blueF()));
}

QColor quietColor(const QPalette& palette)
{
    const QColor text = foreground(palette);
    const QColor quiet = mixed(text, background(palette), 0.66);
    return contrast(quiet, background(palette)) >= readable ? quiet : text;
}

QColor errorColor(const QPalette& palette)
{
    return fitting(palette, QColor(0xB4, 0x23, 0x28), QColor(0xFF, 0x8A, 0x80));
}

QColor errorBackground(const QPalette& palette)
{
    return mixed(errorColor(palette), background(palette), 0.1);
}

QColor successColor(const QPalette& palette)
{
    return fitting(palette, QColor(0x17, 0x70, 0x3C), QColor(0x6F, 0xCE, 0x98));
}

// The palette's own colour of links is rarely meant for buttons, and often the blue of early browsers.
QColor linkColor(const QPalette& palette)
{
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    for (double part = 1; part > 0; part -= 0.1) {
        const QColor color = mixed(accent, foreground(palette), part);
        if (contrast(color, background(palette)) >= readable)
            return color;
    }
    return foreground(palette);
}

} // namespace tljira
