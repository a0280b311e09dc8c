#include "download/TightLayout.h"

#include <QBoxLayout>
#include <QLabel>
#include <QScrollArea>

#include <gtest/gtest.h>

namespace {

constexpr int width = 200;

/// A view of this height, whatever is around it.
QWidget* block(int height)
{
    auto* view = new QWidget;
    view->setFixedSize(30, height);
    return view;
}

/// Three lines, something that can be done without, and a row.
class TightLayoutTest : public testing::Test
{
protected:
    // 24 above and below, 3 × 20, 40, 30 for the row, and four gaps of 12.
    static constexpr int roomy = 202;
    // The margins halved, also those of the row, and gaps of 2.
    static constexpr int tight = 145;

    TightLayoutTest()
    {
        layout->setContentsMargins(8, 10, 6, 14);
        layout->setSpacing(12);
        for (int line = 0; line < 3; ++line)
            layout->addWidget(block(20));
        optional->setProperty("givesWay", true);
        layout->addWidget(optional);
        layout->addLayout(row);
        row->setContentsMargins(0, 4, 0, 6);
        row->setSpacing(7);
        row->addWidget(block(20));
        row->addWidget(block(20));
        view.show();
    }

    void expectRoomy() const
    {
        EXPECT_EQ(layout->contentsMargins(), QMargins(8, 10, 6, 14));
        EXPECT_EQ(layout->spacing(), 12);
        EXPECT_EQ(row->contentsMargins(), QMargins(0, 4, 0, 6));
        EXPECT_EQ(row->spacing(), 7);
    }

    void expectTight() const
    {
        EXPECT_EQ(layout->contentsMargins(), QMargins(8, 5, 6, 7));
        EXPECT_EQ(layout->spacing(), 2);
        EXPECT_EQ(row->contentsMargins(), QMargins(0, 2, 0, 3));
        EXPECT_EQ(row->spacing(), 7);
    }

    QWidget view;
    QVBoxLayout* const layout = new QVBoxLayout(&view);
    QWidget* const optional = block(40);
    QHBoxLayout* const row = new QHBoxLayout;
};

TEST_F(TightLayoutTest, leavesAViewAsItIsThatFits)
{
    fitIntoHeight(&view, width, roomy);
    expectRoomy();
    EXPECT_FALSE(optional->isHidden());
}

TEST_F(TightLayoutTest, takesTheRoomBetweenTheLinesFirst)
{
    for (const int height : {roomy - 1, tight}) {
        fitIntoHeight(&view, width, height);
        expectTight();
        EXPECT_FALSE(optional->isHidden());
    }
}

TEST_F(TightLayoutTest, doesWithoutWhatGivesWayWhereThatIsNotEnough)
{
    fitIntoHeight(&view, width, tight - 1);
    expectTight();
    EXPECT_TRUE(optional->isHidden());
    EXPECT_FALSE(layout->itemAt(0)->widget()->isHidden());
}

TEST_F(TightLayoutTest, isRoomyAgainWhereThereIsRoom)
{
    fitIntoHeight(&view, width, 0);
    fitIntoHeight(&view, width, 0);
    fitIntoHeight(&view, width, roomy);
    expectRoomy();
    EXPECT_FALSE(optional->isHidden());
}

TEST_F(TightLayoutTest, countsNothingThatIsHidden)
{
    layout->itemAt(0)->widget()->hide();
    fitIntoHeight(&view, width, roomy - 32);
    expectRoomy();
    fitIntoHeight(&view, width, roomy - 33);
    expectTight();
}

TEST_F(TightLayoutTest, keepsARowThatRunsTheOtherWayAsWide)
{
    row->setDirection(QBoxLayout::RightToLeft);
    fitIntoHeight(&view, width, roomy - 1);
    expectTight();
}

TEST_F(TightLayoutTest, widensNoGapThatIsNarrowAlready)
{
    layout->setSpacing(1);
    fitIntoHeight(&view, width, 0);
    EXPECT_EQ(layout->spacing(), 1);
}

TEST_F(TightLayoutTest, leavesWhatIsInsideAViewToThatView)
{
    auto* inside = new QVBoxLayout(layout->itemAt(1)->widget());
    inside->setContentsMargins(2, 4, 2, 4);
    inside->setSpacing(6);
    fitIntoHeight(&view, width, 0);
    EXPECT_EQ(inside->contentsMargins(), QMargins(2, 4, 2, 4));
    EXPECT_EQ(inside->spacing(), 6);
}

TEST_F(TightLayoutTest, knowsHowHighATextIsThatWraps)
{
    auto* label = new QLabel(QStringLiteral("one word more ").repeated(20));
    label->setWordWrap(true);
    layout->addWidget(label);
    label->show();
    // Beside the text are margins of 8 and 6.
    const int height = roomy + 12 + label->heightForWidth(width - 14);
    fitIntoHeight(&view, width, height);
    expectRoomy();
    fitIntoHeight(&view, width, height - 1);
    expectTight();
}

TEST_F(TightLayoutTest, seesAtOnceThatAViewInsideAViewHasGrown)
{
    QWidget* const inner = block(10);
    QWidget* outer = inner;
    for (int depth = 0; depth < 2; ++depth) {
        auto* group = new QWidget;
        auto* inside = new QVBoxLayout(group);
        inside->setContentsMargins(0, 0, 0, 0);
        inside->addWidget(outer);
        outer = group;
    }
    layout->addWidget(outer);
    outer->show();
    const int height = roomy + 12 + 10;
    fitIntoHeight(&view, width, height);
    expectRoomy();
    inner->setFixedHeight(30);
    fitIntoHeight(&view, width, height);
    expectTight();
}

TEST(TightLayout, doesNothingWhereThereIsNoViewOrNoLayout)
{
    fitIntoHeight(nullptr, width, 0);
    QWidget view;
    auto* inside = new QWidget(&view);
    inside->setProperty("givesWay", true);
    inside->show();
    fitIntoHeight(&view, width, 0);
    EXPECT_FALSE(inside->isHidden());
}

/// What can be scrolled takes the height of all that is in it.
class TightScrollTest : public testing::Test
{
protected:
    TightScrollTest()
    {
        auto* around = new QVBoxLayout(&view);
        around->setContentsMargins(0, 0, 0, 0);
        around->addWidget(area);
        area->setWidget(new QWidget);
        view.show();
    }

    QVBoxLayout* layOut() const
    {
        auto* layout = new QVBoxLayout(area->widget());
        layout->setContentsMargins(0, 10, 0, 10);
        layout->setSpacing(12);
        return layout;
    }

    QWidget view;
    QScrollArea* const area = new QScrollArea;
};

TEST_F(TightScrollTest, isAsHighAsItsContent)
{
    auto* inside = layOut();
    for (int line = 0; line < 2; ++line) {
        inside->addWidget(block(130));
        inside->itemAt(line)->widget()->show();
    }
    fitIntoHeight(&view, width, 292);
    EXPECT_EQ(inside->spacing(), 12);
    fitIntoHeight(&view, width, 291);
    EXPECT_EQ(inside->spacing(), 2);
    EXPECT_EQ(inside->contentsMargins(), QMargins(0, 5, 0, 5));
}

TEST_F(TightScrollTest, isAsHighAsItsTextsAtTheWidthOfTheView)
{
    auto* inside = layOut();
    auto* label = new QLabel(QStringLiteral("one word more ").repeated(60));
    label->setWordWrap(true);
    inside->addWidget(label);
    label->show();
    const int height = 20 + label->heightForWidth(width);
    fitIntoHeight(&view, width, height);
    EXPECT_EQ(inside->spacing(), 12);
    fitIntoHeight(&view, width, height - 1);
    EXPECT_EQ(inside->spacing(), 2);
}

TEST_F(TightScrollTest, takesNoRoomWithoutALayoutInside)
{
    area->widget()->setFixedHeight(500);
    view.layout()->setContentsMargins(0, 6, 0, 6);
    fitIntoHeight(&view, width, 12);
    EXPECT_EQ(view.layout()->contentsMargins(), QMargins(0, 6, 0, 6));
    area->takeWidget()->deleteLater();
    fitIntoHeight(&view, width, 12);
    EXPECT_EQ(view.layout()->contentsMargins(), QMargins(0, 6, 0, 6));
}

} // namespace
