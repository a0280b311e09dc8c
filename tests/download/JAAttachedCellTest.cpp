// Cells of a host's own interface file, which may look otherwise than the framework's.

#include "download/JAAttachedCell.h"

#include "platform/toolkit/views/ElidedLabel.h"
#include "tests/kit/Printers.h"

#include <QBoxLayout>

#include <gtest/gtest.h>

namespace {

class JAAttachedCellTest : public testing::Test
{
protected:
    JAAttachedCellTest()
    {
        title->setObjectName(QStringLiteral("titleLabel"));
        size->setObjectName(QStringLiteral("sizeLabel"));
        button->setObjectName(QStringLiteral("downloadButton"));
    }

    /// Wakes the cell when its layout is complete.
    void show()
    {
        cell.wake(QStringLiteral("jaAttachedCell"));
        cell.show();
    }

    JAAttachedCell cell;
    tljira::ElidedLabel* const title = new tljira::ElidedLabel(&cell);
    QLabel* const size = new QLabel(&cell);
    QPushButton* const button = new QPushButton(&cell);
};

TEST_F(JAAttachedCellTest, hasNoHeightOfItsOwnWithoutALayout)
{
    show();
    EXPECT_FALSE(cell.hasHeightForWidth());
    EXPECT_EQ(cell.heightForWidth(400), -1);
}

TEST_F(JAAttachedCellTest, needsNoHeightForAWidthWhereNothingWraps)
{
    auto* row = new QHBoxLayout(&cell);
    row->addWidget(size);
    row->addWidget(button);
    delete title;
    show();
    EXPECT_FALSE(cell.hasHeightForWidth());
}

TEST_F(JAAttachedCellTest, leavesALayoutOfAnotherKindAsItIs)
{
    auto* grid = new QGridLayout(&cell);
    grid->addWidget(title, 0, 0);
    grid->addWidget(size, 0, 1);
    grid->addWidget(button, 0, 2);
    show();
    cell.resize(50, 40);
    EXPECT_EQ(grid->itemAtPosition(0, 2)->widget(), button);
    EXPECT_LT(title->x(), button->x());
}

TEST_F(JAAttachedCellTest, keepsItsOwnGapsAndLinesWhereThereIsRoom)
{
    auto* row = new QHBoxLayout(&cell);
    row->setSpacing(10);
    row->addWidget(title, 1);
    auto* beside = new QHBoxLayout;
    row->addLayout(beside);
    beside->setSpacing(3);
    beside->addWidget(size);
    beside->addWidget(button);
    title->setMaximumLines(5);
    cell.resize(2000, 40);
    show();
    EXPECT_EQ(beside->spacing(), 3);
    EXPECT_EQ(title->maximumLines(), 5);
}

} // namespace
