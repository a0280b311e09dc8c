#include "tests/framework/jobs/JobsTest.h"

#include <QApplication>
#include <QVBoxLayout>
#include <QWindow>

namespace {

using namespace tests;

/// Whose dialog a window of the framework is. Beside the parent another window of the host is in front.
class ParentTest : public JobsTest
{
protected:
    ParentTest()
    {
        plain->setTitle(QStringLiteral("without widgets"));
        plain->resize(200, 100);
    }

    void SetUp() override
    {
        JobsTest::SetUp();
        plain->show();
        host->activateWindow();
        ASSERT_TRUE(waitUntil([this] { return host->isActiveWindow(); }));
    }

    /// Of the window that each of the jobs opens.
    void expectOwner(QObject* parent, const QWindow* owner)
    {
        ASSERT_TRUE(TLJiraJobs::attach({QStringLiteral("plan.tessaloom"), bytes}, parent, remember()));
        upload = std::dynamic_pointer_cast<TLJiraUpload>(client->delegate());
        EXPECT_EQ(ownerOf(*upload), owner);
        closeByTitleBar(*upload);
        ASSERT_TRUE(TLJiraJobs::fetch(parent, remember()));
        entry = std::dynamic_pointer_cast<JMWindowController>(client->delegate());
        EXPECT_EQ(ownerOf(*entry), owner);
        closeByTitleBar(*entry);
        ASSERT_TRUE(waitForEnd(2));
    }

    static QWindow* ownerOf(const tljira::WindowController& controller)
    {
        return controller.windowIfLoaded()->widget()->windowHandle()->transientParent();
    }

    std::unique_ptr<QWindow> plain = std::make_unique<QWindow>();
};

TEST_F(ParentTest, isAWindowWithoutWidgets)
{
    expectOwner(plain.get(), plain.get());
}

TEST_F(ParentTest, isTheWindowAroundAWindowInside)
{
    QWindow inside(plain.get());
    inside.show();
    expectOwner(&inside, plain.get());
}

TEST_F(ParentTest, isTheViewAroundAWindowInside)
{
    QWidget other;
    QVBoxLayout layout(&other);
    auto* const inside = new QWindow;
    layout.addWidget(QWidget::createWindowContainer(inside));
    other.show();
    host->activateWindow();
    ASSERT_TRUE(waitUntil([this] { return host->isActiveWindow(); }));
    expectOwner(inside, other.windowHandle());
}

TEST_F(ParentTest, isTheWindowAboveAnObject)
{
    QObject object(plain.get());
    expectOwner(&object, plain.get());
}

TEST_F(ParentTest, isTheViewAboveAnObject)
{
    QWidget other;
    QWidget view(&other);
    QObject object(&view);
    other.show();
    host->activateWindow();
    ASSERT_TRUE(waitUntil([this] { return host->isActiveWindow(); }));
    expectOwner(&object, other.windowHandle());
}

TEST_F(ParentTest, isTheActiveWindowWhereAnObjectStandsInNone)
{
    QObject object;
    expectOwner(&object, host->windowHandle());
}

TEST_F(ParentTest, isTheActiveWindowWhileItsOwnIsNotOnScreen)
{
    plain->hide();
    expectOwner(plain.get(), host->windowHandle());
}

TEST_F(ParentTest, isTheActiveWindowWithoutWidgetsWhereThereIsNone)
{
    plain->requestActivate();
    ASSERT_TRUE(waitUntil([this] { return QApplication::focusWindow() == plain.get(); }));
    expectOwner(nullptr, plain.get());
}

TEST_F(ParentTest, aJobEndsWithAWindowWithoutWidgets)
{
    ASSERT_TRUE(TLJiraJobs::attach({QStringLiteral("plan.tessaloom"), bytes}, plain.get(), remember()));
    upload = std::dynamic_pointer_cast<TLJiraUpload>(client->delegate());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(panel().uploadView()); }));
    plain.reset();

    EXPECT_FALSE(upload->window()->isVisible());
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_F(ParentTest, aJobOutlivesAWindowThatIsOnlyClosed)
{
    ASSERT_TRUE(TLJiraJobs::fetch(plain.get(), remember()));
    entry = std::dynamic_pointer_cast<JMWindowController>(client->delegate());
    plain->close();

    EXPECT_TRUE(entry->window()->isVisible());
    EXPECT_EQ(ownerOf(*entry), nullptr);
    closeByTitleBar(*entry);
    ASSERT_TRUE(waitForEnd());
}

} // namespace
