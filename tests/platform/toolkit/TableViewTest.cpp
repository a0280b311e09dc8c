#include "platform/toolkit/tables/TableView.h"

#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/TableTest.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QtTest/QTest>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace tljira;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::TestCell;

using tests::cellHeight;
using tests::viewHeight;

class TableViewTest : public tests::TableTest
{
};

TEST_F(TableViewTest, standsInAnInterfaceFile)
{
    ASSERT_TRUE(table);
    EXPECT_EQ(table->numberOfRows(), 0);
    EXPECT_EQ(rows.countsAsked, 0);
}

TEST_F(TableViewTest, hasRowsAsHighAsWhatStandsInThem)
{
    QFont large = window->contentView()->font();
    large.setPointSize(40);
    window->contentView()->setFont(large);
    show(3);

    const auto* cell = dynamic_cast<TestCell*>(table->cellAtRow(1));
    ASSERT_TRUE(cell);
    EXPECT_GT(cell->height(), cellHeight);
    EXPECT_GE(cell->titleLabel->height(), cell->titleLabel->fontMetrics().height());
}

TEST_F(TableViewTest, asksForItsRowsWhenItIsFirstShown)
{
    show(3);

    EXPECT_EQ(rows.countsAsked, 1);
    EXPECT_THAT(rows.rowsAsked, ElementsAre(0, 1, 2));
    EXPECT_EQ(titleAt(2), QStringLiteral("2"));
}

TEST_F(TableViewTest, asksNoMoreWhenItIsShownAgain)
{
    show(3);
    rows.count = 5;

    window->orderOut();
    window->makeKeyAndOrderFront();
    tests::drainMainQueue();

    EXPECT_EQ(rows.countsAsked, 1);
    EXPECT_EQ(table->numberOfRows(), 3);
}

TEST_F(TableViewTest, asksForItsRowsInsideReloadData)
{
    show(2);
    rows.rowsAsked.clear();
    rows.count = 4;

    table->reloadData();

    EXPECT_EQ(rows.countsAsked, 2);
    EXPECT_EQ(table->numberOfRows(), 4);
    EXPECT_THAT(rows.rowsAsked, ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(titleAt(3), QStringLiteral("3"));
}

TEST_F(TableViewTest, asksForTheNumberOfRowsInsideReloadDataThoughItIsOffScreen)
{
    rows.count = 4;

    table->reloadData();
    EXPECT_EQ(rows.countsAsked, 1);
    EXPECT_EQ(table->numberOfRows(), 4);
    EXPECT_THAT(rows.rowsAsked, IsEmpty());

    window->makeKeyAndOrderFront();
    tests::drainMainQueue();
    EXPECT_EQ(rows.countsAsked, 1);
    EXPECT_EQ(titleAt(3), QStringLiteral("3"));
}

TEST_F(TableViewTest, takesItsRowHeightFromTheCellUnlessTold)
{
    show(100);
    EXPECT_EQ(table->cellAtRow(1)->geometry().top(), cellHeight);
    EXPECT_EQ(table->cellAtRow(1)->height(), cellHeight);
    EXPECT_EQ(bar()->maximum(), 100 * cellHeight - viewHeight);

    table->setRowHeight(80);

    EXPECT_EQ(table->cellAtRow(1)->geometry().top(), 80);
    EXPECT_EQ(table->cellAtRow(1)->height(), 80);
    EXPECT_EQ(bar()->maximum(), 100 * 80 - viewHeight);
}

TEST_F(TableViewTest, makesCellsForTheRowsInSightAndOneMoreOnly)
{
    show(100000);

    EXPECT_EQ(table->numberOfRows(), 100000);
    EXPECT_THAT(rows.rowsAsked, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_EQ(rows.cells.size(), 5);
}

TEST_F(TableViewTest, reusesItsCellsFromTopToBottom)
{
    show(100000);

    for (int value = 0; value < bar()->maximum(); value += bar()->maximum() / 500) {
        bar()->setValue(value);
        ASSERT_EQ(titleAt(value / cellHeight), QString::number(value / cellHeight));
    }
    bar()->setValue(bar()->maximum());

    EXPECT_EQ(titleAt(99999), QStringLiteral("99999"));
    EXPECT_EQ(table->cellAtRow(99999)->geometry().bottom(), table->viewport()->rect().bottom());
    EXPECT_LE(rows.cells.size(), viewHeight / cellHeight + 3);
    EXPECT_EQ(table->cellAtRow(0), nullptr);
    int reused = 0;
    for (const TestCell* cell : rows.cells) {
        EXPECT_EQ(cell->timesAwoken, 1);
        reused += cell->timesReused;
    }
    EXPECT_GT(reused, 2000);
}

TEST_F(TableViewTest, asksOnlyForTheRowsThatScrollIn)
{
    show(1000);
    rows.rowsAsked.clear();

    bar()->setValue(cellHeight);
    EXPECT_THAT(rows.rowsAsked, ElementsAre(5));
    bar()->setValue(cellHeight + 10);
    EXPECT_THAT(rows.rowsAsked, ElementsAre(5, 6));
    bar()->setValue(cellHeight + 11);
    EXPECT_THAT(rows.rowsAsked, ElementsAre(5, 6));
}

TEST_F(TableViewTest, hidesTheCellsThatNoRowUses)
{
    show(100);
    rows.count = 1;

    table->reloadData();

    int visible = 0;
    for (const TestCell* cell : rows.cells)
        visible += cell->isVisible() ? 1 : 0;
    EXPECT_EQ(visible, 1);
    EXPECT_EQ(bar()->maximum(), 0);
}

TEST_F(TableViewTest, showsMoreRowsWhenItGrows)
{
    show(100);

    window->setFrame(QRectF(0, 0, 300, 400), true);
    tests::drainMainQueue();

    EXPECT_EQ(titleAt(7), QStringLiteral("7"));
    EXPECT_EQ(table->cellAtRow(0)->width(), table->viewport()->width());
}

TEST_F(TableViewTest, scrollsByKeys)
{
    show(1000);
    table->setFocus();

    QTest::keyClick(table, Qt::Key_Down);
    EXPECT_EQ(bar()->value(), cellHeight);
    QTest::keyClick(table, Qt::Key_PageDown);
    EXPECT_EQ(bar()->value(), cellHeight + viewHeight);
    QTest::keyClick(table, Qt::Key_Up);
    EXPECT_EQ(bar()->value(), viewHeight);
    QTest::keyClick(table, Qt::Key_End);
    EXPECT_EQ(bar()->value(), bar()->maximum());
    QTest::keyClick(table, Qt::Key_Home);
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(TableViewTest, walksThroughTheControlsOfItsRowsByTab)
{
    show(1000);
    table->setFocus();

    for (qint64 row = 0; row < 20; ++row) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(table->rowForView(QApplication::focusWidget()), row);
        const QRect cell = table->cellAtRow(row)->geometry();
        ASSERT_TRUE(table->viewport()->rect().contains(cell)) << row;
    }
    for (qint64 row = 18; row >= 0; --row) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        ASSERT_EQ(table->rowForView(QApplication::focusWidget()), row);
    }
}

TEST_F(TableViewTest, keepsTheKeyboardWhenTheFocusedRowScrollsAway)
{
    show(1000);
    dynamic_cast<TestCell*>(table->cellAtRow(1))->downloadButton->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);

    EXPECT_TRUE(table->hasFocus());
    EXPECT_EQ(bar()->value(), 2 * viewHeight);
}

TEST_F(TableViewTest, knowsTheRowOfAViewInside)
{
    show(10);
    auto* cell = dynamic_cast<TestCell*>(table->cellAtRow(2));

    EXPECT_EQ(table->rowForView(cell->downloadButton), 2);
    EXPECT_EQ(table->rowForView(table), -1);
    EXPECT_EQ(table->rowForView(nullptr), -1);
}

TEST_F(TableViewTest, maySeeItsWindowChangedByTheDataSource)
{
    rows.onCount = [&] {
        window->setFrame(QRectF(0, 0, 300, 350), true, true);
        table->setVisible(false);
        table->setVisible(true);
    };
    show(100);
    tests::drainMainQueue();
    table->reloadData();

    EXPECT_EQ(table->height(), 350);
    EXPECT_EQ(titleAt(6), QStringLiteral("6"));
}

TEST_F(TableViewTest, mayBeReloadedByTheDataSourceWhileItAsksForCells)
{
    show(10);
    rows.onCell = [&](qint64 row) {
        if (row != 1 || rows.count == 2)
            return;
        rows.count = 2;
        table->reloadData();
    };

    table->reloadData();
    tests::drainMainQueue();

    EXPECT_EQ(rows.count, 2);
    EXPECT_EQ(table->numberOfRows(), 2);
    EXPECT_EQ(titleAt(0), QStringLiteral("0"));
    EXPECT_EQ(titleAt(1), QStringLiteral("1"));
    EXPECT_EQ(table->cellAtRow(2), nullptr);
    EXPECT_EQ(std::ranges::count_if(rows.cells, [](const TestCell* cell) { return cell->isVisible(); }), 2);
}

TEST_F(TableViewTest, isEmptyWithoutADataSource)
{
    show(10);

    table->setDataSource(nullptr);
    table->reloadData();

    EXPECT_EQ(table->numberOfRows(), 0);
    EXPECT_EQ(table->cellAtRow(0), nullptr);
}

TEST_F(TableViewTest, showsCellsThatAreMadeWithoutAnInterfaceFile)
{
    table->setCellMaker([](const QString& identifier) {
        auto* cell = new TestCell(nullptr);
        cell->resize(viewHeight, cellHeight);
        auto* label = new QLabel(cell);
        label->setObjectName(QStringLiteral("titleLabel"));
        cell->wake(identifier);
        return cell;
    });
    show(100);

    auto* cell = dynamic_cast<TestCell*>(table->cellAtRow(2));
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->identifier(), QStringLiteral("testCell"));
    EXPECT_EQ(cell->timesAwoken, 1);
    EXPECT_EQ(titleAt(2), QStringLiteral("2"));
    EXPECT_THAT(cell->connectOutlets(), ElementsAre(QStringLiteral("downloadButton")));
}

TEST_F(TableViewTest, leavesARowEmptyForWhichThereIsNoCell)
{
    table->setCellMaker(nullptr);

    show(10);

    EXPECT_EQ(table->makeViewWithIdentifier(QStringLiteral("testCell")), nullptr);
    EXPECT_EQ(table->cellAtRow(0), nullptr);
}

} // namespace
