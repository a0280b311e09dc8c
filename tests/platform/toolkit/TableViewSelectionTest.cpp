#include "platform/toolkit/tables/TableView.h"

#include "tests/platform/toolkit/TableTest.h"

#include <QAccessible>
#include <QLabel>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::cellHeight;
using tests::TestCell;
using tests::viewHeight;

class TableViewSelectionTest : public tests::TableTest
{
protected:
    TableViewSelectionTest()
    {
        table->setSelectsRows(true);
        QObject::connect(table, &tljira::TableView::rowActivated, table,
                         [this](qint64 row) { activated.push_back(row); });
    }

    void showWithFocus(qint64 count)
    {
        show(count);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        ASSERT_TRUE(tests::waitUntil([this] { return table->hasFocus(); }));
    }

    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    static QPoint middleOf(qint64 row) { return {20, static_cast<int>(row) * cellHeight + cellHeight / 2}; }

    QColor colorBehind(qint64 row) const
    {
        const QPoint inside(table->viewport()->width() - 6, middleOf(row).y());
        return table->viewport()->grab().toImage().pixelColor(inside);
    }

    std::vector<qint64> activated;
};

TEST_F(TableViewSelectionTest, aTableHasNoSelectionUnlessToldTo)
{
    table->setSelectsRows(false);
    show(10);
    table->selectRow(2);
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(TableViewSelectionTest, theFirstRowIsSelectedAtFirst)
{
    show(10);
    EXPECT_EQ(table->selectedRow(), 0);
}

TEST_F(TableViewSelectionTest, aReloadSelectsTheFirstRowAndBringsItIntoSight)
{
    show(100);
    table->selectRow(50);
    EXPECT_GT(bar()->value(), 0);
    table->reloadData();
    EXPECT_EQ(table->selectedRow(), 0);
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(TableViewSelectionTest, anEmptyTableHasNoSelectedRow)
{
    show(10);
    rows.count = 0;
    table->reloadData();
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(TableViewSelectionTest, arrowsMoveTheSelectionAndStopAtTheEnds)
{
    showWithFocus(3);
    press(Qt::Key_Up);
    EXPECT_EQ(table->selectedRow(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(table->selectedRow(), 1);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(table->selectedRow(), 2);
    press(Qt::Key_Up);
    EXPECT_EQ(table->selectedRow(), 1);
}

TEST_F(TableViewSelectionTest, pagesAndEndsMoveTheSelectionAsFarAsTheyReach)
{
    showWithFocus(100);
    press(Qt::Key_PageDown);
    EXPECT_EQ(table->selectedRow(), viewHeight / cellHeight);
    press(Qt::Key_PageUp);
    EXPECT_EQ(table->selectedRow(), 0);
    press(Qt::Key_End);
    EXPECT_EQ(table->selectedRow(), 99);
    EXPECT_EQ(bar()->value(), bar()->maximum());
    press(Qt::Key_Home);
    EXPECT_EQ(table->selectedRow(), 0);
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(TableViewSelectionTest, theSelectedRowComesIntoSight)
{
    showWithFocus(100);
    for (int presses = 0; presses < 6; ++presses)
        press(Qt::Key_Down);
    ASSERT_NE(table->cellAtRow(6), nullptr);
    EXPECT_TRUE(table->viewport()->rect().contains(table->cellAtRow(6)->geometry()));
    EXPECT_EQ(titleAt(6), QStringLiteral("6"));
}

TEST_F(TableViewSelectionTest, returnAndEnterActivateTheSelectedRow)
{
    showWithFocus(10);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    press(Qt::Key_Enter);
    EXPECT_THAT(activated, ElementsAre(1, 2));
}

TEST_F(TableViewSelectionTest, returnOnAControlOfARowIsForTheControl)
{
    show(10);
    auto* button = dynamic_cast<TestCell*>(table->cellAtRow(2))->downloadButton.get();
    int presses = 0;
    QObject::connect(button, &QPushButton::clicked, button, [&presses] { ++presses; });
    QTest::mouseClick(button, Qt::LeftButton);
    press(Qt::Key_Return);
    EXPECT_EQ(presses, 2);
    EXPECT_THAT(activated, IsEmpty());
}

TEST_F(TableViewSelectionTest, returnInAnEmptyTableIsForTheWindow)
{
    auto* button = new QPushButton(window->contentView());
    button->setDefault(true);
    button->setFocusPolicy(Qt::NoFocus);
    int presses = 0;
    QObject::connect(button, &QPushButton::clicked, button, [&presses] { ++presses; });
    showWithFocus(0);
    press(Qt::Key_Return);
    EXPECT_EQ(presses, 1);
    EXPECT_THAT(activated, IsEmpty());
}

TEST_F(TableViewSelectionTest, aClickSelectsARow)
{
    show(10);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(table->selectedRow(), 2);
    EXPECT_THAT(activated, IsEmpty());
}

TEST_F(TableViewSelectionTest, aClickOnALabelSelectsItsRow)
{
    show(10);
    QTest::mouseClick(dynamic_cast<TestCell*>(table->cellAtRow(1))->titleLabel, Qt::LeftButton);
    EXPECT_EQ(table->selectedRow(), 1);
}

TEST_F(TableViewSelectionTest, aClickInARowThatHasScrolledSelectsThatRow)
{
    show(100);
    bar()->setValue(10 * cellHeight);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(table->selectedRow(), 12);
}

TEST_F(TableViewSelectionTest, aClickBelowTheRowsChangesNothing)
{
    show(2);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(1));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(3));
    EXPECT_EQ(table->selectedRow(), 1);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, middleOf(3));
    EXPECT_THAT(activated, IsEmpty());
}

TEST_F(TableViewSelectionTest, aDoubleClickActivatesARowOnce)
{
    show(10);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(3));
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, middleOf(3));
    EXPECT_THAT(activated, ElementsAre(3));
    EXPECT_EQ(table->selectedRow(), 3);
}

TEST_F(TableViewSelectionTest, onlyTheLeftButtonSelectsAndActivates)
{
    show(10);
    QTest::mouseClick(table->viewport(), Qt::RightButton, {}, middleOf(3));
    QTest::mouseDClick(table->viewport(), Qt::RightButton, {}, middleOf(0));
    EXPECT_EQ(table->selectedRow(), 0);
    EXPECT_THAT(activated, IsEmpty());
}

TEST_F(TableViewSelectionTest, theSelectionFollowsTheFocusIntoARow)
{
    showWithFocus(10);
    for (const qint64 row : {0, 1, 2}) {
        press(Qt::Key_Tab);
        EXPECT_EQ(table->rowForView(QApplication::focusWidget()), row);
        EXPECT_EQ(table->selectedRow(), row);
    }
}

TEST_F(TableViewSelectionTest, aKeyThatMovesTheSelectionAwayTakesTheKeyboardOutOfTheRow)
{
    showWithFocus(100);
    press(Qt::Key_Tab);
    ASSERT_FALSE(table->hasFocus());
    press(Qt::Key_End);
    EXPECT_TRUE(table->hasFocus());
    EXPECT_EQ(table->selectedRow(), 99);
}

TEST_F(TableViewSelectionTest, theSelectedRowCanBeSeen)
{
    show(10);
    EXPECT_NE(colorBehind(0), colorBehind(1));
    table->selectRow(1);
    EXPECT_NE(colorBehind(1), colorBehind(2));
    EXPECT_EQ(colorBehind(0), colorBehind(2));
}

// The heights of rows.

TEST_F(TableViewSelectionTest, rowsFollowTheFont)
{
    show(10);
    QFont font = window->contentView()->font();
    font.setPointSize(40);
    window->contentView()->setFont(font);
    tests::drainMainQueue();
    const auto* cell = dynamic_cast<TestCell*>(table->cellAtRow(1));
    ASSERT_NE(cell, nullptr);
    EXPECT_GT(cell->height(), cellHeight);
    EXPECT_EQ(table->cellAtRow(1)->geometry().top(), cell->height());

    font.setPointSize(9);
    window->contentView()->setFont(font);
    tests::drainMainQueue();
    EXPECT_EQ(table->cellAtRow(1)->height(), cellHeight);
}

TEST_F(TableViewSelectionTest, aRowThatNeedsMoreThanTheFirstMakesAllHigher)
{
    rows.onCell = {};
    show(10);
    auto* second = dynamic_cast<TestCell*>(table->cellAtRow(1));
    second->titleLabel->setMinimumHeight(120);
    window->setFrame(QRectF(0, 0, 320, 400), false);
    tests::drainMainQueue();
    EXPECT_GE(table->cellAtRow(0)->height(), 120);
    EXPECT_EQ(table->cellAtRow(0)->height(), table->cellAtRow(1)->height());
    EXPECT_EQ(bar()->maximum(), 10 * table->cellAtRow(0)->height() - table->viewport()->height());
}

TEST_F(TableViewSelectionTest, screenReadersMeetRowsThatCanBeSelectedAndChosen)
{
    showWithFocus(10);
    const auto row = [this](qint64 index) { return QAccessible::queryAccessibleInterface(table->cellAtRow(index)); };
    table->cellAtRow(1)->findChild<QLabel*>()->setText(QStringLiteral("second"));
    EXPECT_EQ(row(1)->role(), QAccessible::ListItem);
    EXPECT_EQ(row(1)->text(QAccessible::Name), QStringLiteral("second"));
    EXPECT_TRUE(row(0)->state().selected);
    EXPECT_TRUE(row(0)->state().focused);
    EXPECT_FALSE(row(1)->state().selected);
    row(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(row(1)->state().selected);
    EXPECT_FALSE(row(0)->state().focused);
    EXPECT_THAT(activated, ElementsAre(1));
}

} // namespace
