#pragma once

#include "platform/toolkit/nib/Nib.h"
#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/tables/TableView.h"
#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/Forms.h"
#include "tests/platform/toolkit/TestCell.h"

#include <QPointer>
#include <QScrollBar>
#include <QSet>
#include <gtest/gtest.h>

#include <functional>

namespace tests {

/// As many rows as one likes, each titled with its number.
class Rows : public tljira::TableViewDataSource
{
public:
    qint64 numberOfRowsInTableView(tljira::TableView&) override
    {
        ++countsAsked;
        if (onCount)
            onCount();
        return count;
    }

    tljira::TableCellView* viewForTableColumn(tljira::TableView& table, int column, qint64 row) override
    {
        EXPECT_EQ(column, 0);
        rowsAsked.append(row);
        if (onCell)
            onCell(row);
        auto* cell = dynamic_cast<TestCell*>(table.makeViewWithIdentifier(QStringLiteral("testCell")));
        if (cell) {
            cells.insert(cell);
            cell->titleLabel->setText(QString::number(row));
        }
        return cell;
    }

    std::function<void()> onCount;
    std::function<void(qint64)> onCell;
    qint64 count = 0;
    int countsAsked = 0;
    QList<qint64> rowsAsked;
    QSet<TestCell*> cells;
};

constexpr int cellHeight = 50;
constexpr int viewHeight = 200;

/// A window with a table that is a list of Rows.
class TableTest : public testing::Test
{
protected:
    TableTest()
    {
        tljira::pretendDecorations(QMargins());
        tljira::registerViewClass<TestCell>(QStringLiteral("TestCell"));
        const tljira::NibViews views = tljira::Nib::load(QStringLiteral("List"), tests::forms())->instantiate();
        window = tljira::Window::create(QStringLiteral("List"), views.view);
        table = views.view->findChild<tljira::TableView*>(QStringLiteral("tableView"));
        table->setDataSource(&rows);
    }
    ~TableTest() override { tljira::pretendDecorations(std::nullopt); }

    void show(qint64 count)
    {
        rows.count = count;
        window->makeKeyAndOrderFront();
        ASSERT_TRUE(tests::waitUntil([&] { return window->isKeyWindow() && rows.countsAsked > 0; }));
    }

    QString titleAt(qint64 row) const
    {
        auto* cell = dynamic_cast<TestCell*>(table->cellAtRow(row));
        return cell ? cell->titleLabel->text() : QString();
    }

    QScrollBar* bar() const { return table->verticalScrollBar(); }

    Rows rows;
    std::shared_ptr<tljira::Window> window;
    QPointer<tljira::TableView> table;
};

} // namespace tests
