#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"

#include <QWidget>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

class ChildWindow : public testing::Test
{
protected:
    ChildWindow()
    {
        pretendDecorations(QMargins());
        parent->setFrame(QRectF(100, 100, 300, 200), true);
        child->setFrame(QRectF(500, 150, 100, 80), true);
    }
    ~ChildWindow() override { pretendDecorations(std::nullopt); }

    QWidget parentContent;
    QWidget childContent;
    std::shared_ptr<Window> parent = Window::create(QString(), &parentContent);
    std::shared_ptr<Window> child = Window::create(QString(), &childContent);
};

TEST_F(ChildWindow, knowsItsParent)
{
    parent->addChildWindow(child, Window::Ordered::Below);

    EXPECT_EQ(child->parentWindow(), parent);
    EXPECT_EQ(parent->parentWindow(), nullptr);
    EXPECT_EQ(static_cast<int>(Window::Ordered::Below), -1);
}

TEST_F(ChildWindow, showsAndHidesWithItsParent)
{
    parent->addChildWindow(child, Window::Ordered::Below);
    EXPECT_FALSE(child->isVisible());

    parent->makeKeyAndOrderFront();
    EXPECT_TRUE(child->isVisible());

    parent->close();
    EXPECT_FALSE(child->isVisible());
}

TEST_F(ChildWindow, showsAtOnceBesideAVisibleParent)
{
    parent->makeKeyAndOrderFront();

    parent->addChildWindow(child, Window::Ordered::Above);

    EXPECT_TRUE(child->isVisible());
}

TEST_F(ChildWindow, isTiedToItsParentInTheWindowSystemOnlyAboveIt)
{
    QWidget otherContent;
    const auto other = Window::create(QString(), &otherContent);
    parent->makeKeyAndOrderFront();
    parent->addChildWindow(child, Window::Ordered::Below);
    parent->addChildWindow(other, Window::Ordered::Above);

    EXPECT_EQ(child->widget()->windowHandle()->transientParent(), nullptr);
    EXPECT_EQ(other->widget()->windowHandle()->transientParent(), parent->widget()->windowHandle());
}

TEST_F(ChildWindow, movesWithItsParent)
{
    parent->addChildWindow(child, Window::Ordered::Below);

    parent->setFrame(QRectF(130, 90, 300, 200), true);
    EXPECT_EQ(child->frame(), QRectF(530, 140, 100, 80));

    parent->makeKeyAndOrderFront();
    parent->setFrame(QRectF(100, 100, 300, 200), true, true);
    EXPECT_EQ(child->frame(), QRectF(500, 150, 100, 80));
}

TEST_F(ChildWindow, goesAlongWhenTheUserDragsItsParent)
{
    parent->addChildWindow(child, Window::Ordered::Below);
    parent->makeKeyAndOrderFront();

    parent->widget()->move(parent->widget()->pos() + QPoint(7, -9));

    EXPECT_EQ(child->frame(), QRectF(507, 159, 100, 80));
}

TEST_F(ChildWindow, whoseContentWasMovedElsewhereIsNotShown)
{
    parent->addChildWindow(child, Window::Ordered::Below);
    addSubview(&parentContent, &childContent);

    parent->makeKeyAndOrderFront();

    EXPECT_FALSE(child->isVisible());
    EXPECT_EQ(child->contentView(), nullptr);
    EXPECT_TRUE(childContent.isVisible());
}

TEST_F(ChildWindow, goesOffScreenWhenItsContentIsMovedElsewhere)
{
    parent->makeKeyAndOrderFront();
    parent->addChildWindow(child, Window::Ordered::Below);
    ASSERT_TRUE(child->isVisible());

    addSubview(&parentContent, &childContent);

    EXPECT_FALSE(child->isVisible());
}

TEST_F(ChildWindow, changesOverToAnotherParent)
{
    const auto other = Window::create();
    parent->addChildWindow(child, Window::Ordered::Below);

    other->addChildWindow(child, Window::Ordered::Above);

    EXPECT_EQ(child->parentWindow(), other);
    parent->makeKeyAndOrderFront();
    EXPECT_FALSE(child->isVisible());
    parent->removeChildWindow(child);
    EXPECT_EQ(child->parentWindow(), other);
}

TEST_F(ChildWindow, isKeptByItsParentAndFreedByIt)
{
    const std::weak_ptr<Window> watched = child;
    parent->addChildWindow(child, Window::Ordered::Below);
    child.reset();
    ASSERT_FALSE(watched.expired());
    EXPECT_EQ(watched.lock()->parentWindow(), parent);

    parent.reset();

    EXPECT_TRUE(watched.expired());
}

TEST_F(ChildWindow, outlivesItsParent)
{
    parent->addChildWindow(child, Window::Ordered::Below);
    parent->makeKeyAndOrderFront();

    parent.reset();

    EXPECT_EQ(child->parentWindow(), nullptr);
    EXPECT_FALSE(child->isVisible());
}

TEST_F(ChildWindow, ofNothingIsAQuietNoOp)
{
    parent->addChildWindow(nullptr, Window::Ordered::Below);
    parent->addChildWindow(parent, Window::Ordered::Below);
    parent->removeChildWindow(nullptr);
    parent->removeChildWindow(child);

    EXPECT_EQ(parent->parentWindow(), nullptr);
}

} // namespace
