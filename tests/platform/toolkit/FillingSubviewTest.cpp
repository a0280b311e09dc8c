#include "platform/toolkit/views/FillingSubview.h"

#include "platform/toolkit/views/View.h"

#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace {

using tljira::addFillingSubview;

class FillingSubviewTest : public testing::Test
{
protected:
    FillingSubviewTest() { superview.resize(100, 80); }

    QWidget superview;
    QWidget* first = new QWidget;
    QWidget* second = new QWidget;
};

TEST_F(FillingSubviewTest, fillsAtOnce)
{
    addFillingSubview(&superview, first);

    EXPECT_EQ(first->parentWidget(), &superview);
    EXPECT_EQ(first->geometry(), QRect(0, 0, 100, 80));
    delete second;
}

TEST_F(FillingSubviewTest, followsItsSuperview)
{
    addFillingSubview(&superview, first);
    addFillingSubview(&superview, second);
    superview.resize(200, 150);
    tljira::layoutSubtreeIfNeeded(&superview);

    EXPECT_EQ(first->geometry(), QRect(0, 0, 200, 150));
    EXPECT_EQ(second->geometry(), QRect(0, 0, 200, 150));
}

TEST_F(FillingSubviewTest, usesTheLayoutThatIsThere)
{
    auto* layout = new QVBoxLayout(&superview);
    addFillingSubview(&superview, first);

    EXPECT_EQ(superview.layout(), layout);
    EXPECT_EQ(layout->indexOf(first), 0);
    delete second;
}

TEST_F(FillingSubviewTest, isOverWhenTheViewLeaves)
{
    addFillingSubview(&superview, first);
    tljira::removeFromSuperview(first);
    superview.resize(200, 150);
    tljira::layoutSubtreeIfNeeded(&superview);

    EXPECT_EQ(first->size(), QSize(100, 80));
    delete first;
    delete second;
}

TEST_F(FillingSubviewTest, doesNothingWithoutBothViews)
{
    addFillingSubview(nullptr, first);
    addFillingSubview(&superview, nullptr);

    EXPECT_EQ(first->parentWidget(), nullptr);
    EXPECT_EQ(superview.layout(), nullptr);
    delete first;
    delete second;
}

} // namespace
