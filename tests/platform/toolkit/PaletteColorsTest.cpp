#include "platform/toolkit/views/PaletteColors.h"

#include <gtest/gtest.h>

namespace {

using namespace tljira;

/// Window and text.
struct Desktop
{
    const char* name;
    QRgb window;
    QRgb text;
};

void PrintTo(const Desktop& desktop, std::ostream* out)
{
    *out << desktop.name;
}

class PaletteColorsTest : public testing::TestWithParam<Desktop>
{
protected:
    PaletteColorsTest()
    {
        palette.setColor(QPalette::Window, QColor(GetParam().window));
        palette.setColor(QPalette::WindowText, QColor(GetParam().text));
    }

    double contrastOf(QColor (*color)(const QPalette&)) const
    {
        return contrast(color(palette), palette.color(QPalette::Window));
    }

    QPalette palette;
};

TEST_P(PaletteColorsTest, canBeReadOnTheWindow)
{
    for (const auto color : {quietColor, errorColor, successColor, linkColor})
        EXPECT_GE(contrastOf(color), 4.5) << color(palette).name().toStdString();
    EXPECT_GE(contrast(errorColor(palette), errorBackground(palette)), 4.5);
}

TEST_P(PaletteColorsTest, areQuieterForHelp)
{
    EXPECT_LT(contrastOf(quietColor), contrast(QColor(GetParam().text), QColor(GetParam().window)));
}

TEST_P(PaletteColorsTest, areRedForErrorsAndGreenForSuccess)
{
    EXPECT_GT(errorColor(palette).red(), errorColor(palette).green());
    EXPECT_GT(successColor(palette).green(), successColor(palette).red());
}

TEST_P(PaletteColorsTest, areTheHighlightColourForLinksWhereThatCanBeRead)
{
    const QColor own = QColor(GetParam().window).lightness() > 128 ? QColor(0, 0, 0xA0) : QColor(0xA0, 0xC0, 0xFF);
    palette.setColor(QPalette::Highlight, own);
    EXPECT_LT(contrast(linkColor(palette), own), 1.01);
    palette.setColor(QPalette::Highlight, QColor(GetParam().window));
    EXPECT_GE(contrastOf(linkColor), 4.5);
}

INSTANTIATE_TEST_SUITE_P(desktops, PaletteColorsTest,
                         testing::Values(Desktop{"light", 0xFFEFEFEF, 0xFF000000},
                                         Desktop{"breeze", 0xFFEFF0F1, 0xFF232629},
                                         Desktop{"white", 0xFFFFFFFF, 0xFF202020},
                                         Desktop{"dark", 0xFF2B2D30, 0xFFE4E6EA},
                                         Desktop{"black", 0xFF000000, 0xFFFFFFFF}));

TEST(Contrast, isThatOfTheGuidelinesForAccessibleContent)
{
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_DOUBLE_EQ(contrast(Qt::red, Qt::red), 1);
}

} // namespace
