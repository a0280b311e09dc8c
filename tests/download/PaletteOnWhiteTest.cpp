#include "download/PaletteOnWhite.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

const QPalette dark(QColor(0x35, 0x35, 0x35), QColor(0x20, 0x20, 0x20));

TEST(PaletteOnWhiteTest, isReadableOnWhiteWhateverTheApplicationsPalette)
{
    for (const QPalette& application : {QPalette(Qt::white), dark}) {
        const QPalette palette = paletteOnWhite(application);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::PlaceholderText})
            EXPECT_GT(contrast(palette.color(QPalette::Active, role), Qt::white), 4.5) << role;
        EXPECT_GT(contrast(palette.color(QPalette::Active, QPalette::ButtonText),
                           palette.color(QPalette::Active, QPalette::Button)),
                  4.5);
        EXPECT_EQ(palette.color(QPalette::Active, QPalette::Window), QColor(Qt::white));
        EXPECT_EQ(palette.color(QPalette::Active, QPalette::Base), QColor(Qt::white));
    }
}

TEST(PaletteOnWhiteTest, writesWhatIsLessImportantInAnOpaqueGrey)
{
    const QPalette palette = paletteOnWhite(dark);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const QColor quiet = palette.color(group, QPalette::PlaceholderText);
        EXPECT_EQ(quiet.alpha(), 255);
        EXPECT_GT(quiet.lightness(), palette.color(group, QPalette::Text).lightness());
    }
}

TEST(PaletteOnWhiteTest, keepsTheApplicationsAccent)
{
    QPalette application = dark;
    application.setColor(QPalette::Highlight, Qt::magenta);
    application.setColor(QPalette::HighlightedText, Qt::black);
    const QPalette palette = paletteOnWhite(application);
    EXPECT_EQ(palette.color(QPalette::Active, QPalette::Highlight), QColor(Qt::magenta));
    EXPECT_EQ(palette.color(QPalette::Active, QPalette::HighlightedText), QColor(Qt::black));
}

} // namespace
