#include "platform/toolkit/windows/SheetRoom.h"

#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/WaitUntil.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

/// A window that is lower than its sheet.
class SheetRoomTest : public testing::Test
{
protected:
    SheetRoomTest()
    {
        pretendDecorations(QMargins(0, titleBar, 0, 0));
        content.resize(400, 150);
        sheetContent.resize(300, 250);
        innerContent.resize(200, 350);
        parent = Window::create(QString(), &content);
        sheet = Window::create(QString(), &sheetContent);
        inner = Window::create(QString(), &innerContent);
        parent->setFrame(frame, true);
        parent->makeKeyAndOrderFront();
    }
    ~SheetRoomTest() override { pretendDecorations(std::nullopt); }

    bool becomes(const QSize& size)
    {
        return tests::waitUntil([&] { return parent->widget()->size() == size; });
    }

    QRectF sheetFrame(double width, double height) const
    {
        return {frame.x() + (frame.width() - width) / 2, frame.bottom() - titleBar - height, width, height};
    }

    static constexpr int titleBar = 24;
    const QRectF frame = QRectF(100, 500, 400, 150 + titleBar);
    QWidget content;
    QWidget sheetContent;
    QWidget innerContent;
    std::shared_ptr<Window> parent;
    std::shared_ptr<Window> sheet;
    std::shared_ptr<Window> inner;
};

TEST_F(SheetRoomTest, theWindowGrowsDownwardsAndShrinksBack)
{
    const QPoint corner = parent->widget()->pos();

    parent->beginSheet(sheet, {});
    EXPECT_EQ(sheet->frame(), sheetFrame(300, 250));
    EXPECT_TRUE(becomes(QSize(400, 250)));
    EXPECT_EQ(parent->widget()->pos(), corner);
    EXPECT_EQ(sheet->widget()->geometry(), QRect(50, 0, 300, 250));

    parent->endSheet(sheet);
    EXPECT_TRUE(becomes(QSize(400, 150)));
    EXPECT_EQ(parent->widget()->pos(), corner);
}

TEST_F(SheetRoomTest, itsFrameAndContentStayWhatTheyAre)
{
    parent->beginSheet(sheet, {});
    ASSERT_TRUE(becomes(QSize(400, 250)));

    EXPECT_EQ(parent->frame(), frame);
    EXPECT_EQ(content.size(), QSize(400, 150));
}

TEST_F(SheetRoomTest, aSheetThatChangesItsHeightKeepsItsTopEdge)
{
    parent->beginSheet(sheet, {});

    for (const double height : {350.0, 200.0, 100.0}) {
        QRectF changed = sheet->frame();
        changed.setHeight(height);
        sheet->setFrame(changed, true, true);

        EXPECT_EQ(sheet->frame(), sheetFrame(300, height));
        EXPECT_EQ(sheetContent.height(), height);
        EXPECT_TRUE(becomes(QSize(400, std::max(150, static_cast<int>(height)))));
        EXPECT_TRUE(tests::waitUntil([&] { return sheet->widget()->height() == height; }));
        EXPECT_EQ(sheet->widget()->y(), 0);
        EXPECT_EQ(sheet->frame(), sheetFrame(300, height));
    }
}

TEST_F(SheetRoomTest, aWindowThatItsUserHasResizedDoesNotShrinkBack)
{
    parent->beginSheet(sheet, {});
    ASSERT_TRUE(becomes(QSize(400, 250)));

    parent->widget()->resize(450, 300);
    EXPECT_EQ(content.size(), QSize(450, 300));
    EXPECT_EQ(parent->frame().size(), QSizeF(450, 300 + titleBar));
    EXPECT_EQ(sheet->widget()->geometry(), QRect(75, 0, 300, 250));

    parent->endSheet(sheet);
    tests::drainMainQueue();
    EXPECT_EQ(parent->widget()->size(), QSize(450, 300));
}

TEST_F(SheetRoomTest, itsUserCannotMakeTheWindowSmallerThanTheSheet)
{
    parent->beginSheet(sheet, {});
    ASSERT_TRUE(becomes(QSize(400, 250)));

    EXPECT_TRUE(tests::waitUntil([&] { return parent->widget()->minimumSize() == QSize(300, 250); }));

    parent->endSheet(sheet);
    ASSERT_TRUE(becomes(QSize(400, 150)));
    EXPECT_LT(parent->widget()->minimumHeight(), 150);
}

TEST_F(SheetRoomTest, aFrameThatTheProgramSetsMeanwhileIsTheOneThatStays)
{
    parent->beginSheet(sheet, {});
    ASSERT_TRUE(becomes(QSize(400, 250)));

    const QRectF other(50, 400, 500, 200 + titleBar);
    parent->setFrame(other, true, true);
    EXPECT_EQ(parent->frame(), other);
    EXPECT_EQ(sheet->frame(), QRectF(150, 600 - 250, 300, 250));
    EXPECT_TRUE(becomes(QSize(500, 250)));

    parent->endSheet(sheet);
    EXPECT_EQ(parent->frame(), other);
    EXPECT_TRUE(becomes(QSize(500, 200)));
}

TEST_F(SheetRoomTest, aSheetThatIsTooSmallForItsOwnSheetGrowsLikewise)
{
    parent->beginSheet(sheet, {});
    sheet->beginSheet(inner, {});

    EXPECT_EQ(sheet->frame(), sheetFrame(300, 250));
    EXPECT_EQ(inner->frame(), sheetFrame(200, 350));
    EXPECT_TRUE(becomes(QSize(400, 350)));
    EXPECT_TRUE(tests::waitUntil([&] { return sheet->widget()->height() == 350; }));

    sheet->endSheet(inner);
    EXPECT_TRUE(becomes(QSize(400, 250)));
    EXPECT_TRUE(tests::waitUntil([&] { return sheet->widget()->height() == 250; }));
}

TEST_F(SheetRoomTest, theWindowMovesUpWhereTheScreenEnds)
{
    const QRectF low(100, 20, 400, 150 + titleBar);
    parent->setFrame(low, true);
    const int bottom = QGuiApplication::primaryScreen()->availableGeometry().bottom();

    parent->beginSheet(sheet, {});
    ASSERT_TRUE(becomes(QSize(400, 250)));
    EXPECT_EQ(parent->widget()->geometry().bottom(), bottom);

    parent->endSheet(sheet);
    ASSERT_TRUE(becomes(QSize(400, 150)));
    EXPECT_EQ(parent->frame(), low);
}

TEST_F(SheetRoomTest, aMaximizedWindowStaysAsItIs)
{
    parent->widget()->showMaximized();
    tests::drainMainQueue();
    const QRect maximized = parent->widget()->geometry();
    inner->setFrame(QRectF(0, 0, 200, maximized.height() + 100), true);

    parent->beginSheet(inner, {});
    tests::drainMainQueue();

    EXPECT_EQ(parent->widget()->geometry(), maximized);
    EXPECT_EQ(inner->widget()->height(), maximized.height());
    parent->endSheet(inner);
    tests::drainMainQueue();
    EXPECT_EQ(parent->widget()->geometry(), maximized);
}

TEST_F(SheetRoomTest, aSheetIsAsLargeAsBeforeOnceItIsAWindowAgain)
{
    parent->beginSheet(sheet, {});
    parent->endSheet(sheet);

    EXPECT_EQ(sheet->widget()->size(), QSize(300, 250));
    EXPECT_EQ(sheetContent.size(), QSize(300, 250));
}

} // namespace
