#include "platform/toolkit/views/PushButton.h"

#include "platform/toolkit/views/PaletteColors.h"
#include "platform/toolkit/views/View.h"
#include "tests/platform/toolkit/RolesForm.h"

#include <gtest/gtest.h>

namespace {

class PushButtonTest : public testing::Test
{
protected:
    /// What most of a button is filled with.
    static QColor fill(QPushButton* button) { return button->grab().toImage().pixelColor(6, button->height() / 2); }

    tests::RolesForm form;
    QPushButton* primary = form.view<QPushButton>("defaultButton");
    QPushButton* other = form.view<QPushButton>("otherButton");
    const QColor highlight = form.content->palette().color(QPalette::Highlight);
};

TEST_F(PushButtonTest, isWhatInterfaceFilesCallQPushButton)
{
    EXPECT_NE(dynamic_cast<tljira::PushButton*>(primary), nullptr);
    EXPECT_EQ(describe(primary), QStringLiteral("<QPushButton: defaultButton>"));
}

TEST_F(PushButtonTest, isFilledWithTheHighlightColourAsTheDefaultButton)
{
    EXPECT_NEAR(fill(primary).hslHue(), highlight.hslHue(), 8);
    EXPECT_GT(fill(primary).hslSaturation(), 70);
    EXPECT_LT(fill(other).hslSaturation(), 40);
}

TEST_F(PushButtonTest, hasATextThatCanBeReadOnItsFill)
{
    for (const QRgb accent : {0xFF308CC6, 0xFF3D7ED9, 0xFF80B0FF}) {
        QPalette palette = form.content->palette();
        palette.setColor(QPalette::Highlight, accent);
        palette.setColor(QPalette::HighlightedText, Qt::white);
        form.content->setPalette(palette);
        EXPECT_GE(tljira::contrast(fill(primary), Qt::white), 4);
    }
}

TEST_F(PushButtonTest, changesItsLookWithTheProperty)
{
    const QColor filled = fill(primary);
    const QColor plain = fill(other);
    primary->setDefault(false);
    other->setDefault(true);
    EXPECT_EQ(fill(primary), plain);
    EXPECT_EQ(fill(other), filled);
}

TEST_F(PushButtonTest, followsThePalette)
{
    QPalette green = form.content->palette();
    green.setColor(QPalette::Highlight, QColor(0, 0x80, 0));
    form.content->setPalette(green);
    EXPECT_GT(fill(primary).green(), fill(primary).red());
    EXPECT_GT(fill(primary).green(), fill(primary).blue());
}

TEST_F(PushButtonTest, fadesWhileItIsDisabled)
{
    const int before = fill(primary).hslSaturation();
    const double contrast = tljira::contrast(fill(primary), form.content->palette().color(QPalette::Window));
    primary->setEnabled(false);
    EXPECT_NEAR(fill(primary).hslHue(), highlight.hslHue(), 8);
    EXPECT_LT(tljira::contrast(fill(primary), form.content->palette().color(QPalette::Window)), contrast);
    EXPECT_GT(before, 70);
}

TEST_F(PushButtonTest, hasRoomAroundItsTextAtEverySize)
{
    for (const int points : {9, 12, 24}) {
        QFont font;
        font.setPointSize(points);
        primary->setFont(font);
        EXPECT_GE(primary->minimumSizeHint().height(), QFontMetrics(font).height() + 8);
        EXPECT_GE(primary->minimumSizeHint().width(), QFontMetrics(font).horizontalAdvance(primary->text()) + 16);
    }
}

} // namespace
