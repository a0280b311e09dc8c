#include "platform/toolkit/windows/Window.h"

#include "platform/toolkit/windows/WindowDelegate.h"
#include "tests/kit/WaitUntil.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

class Delegate : public WindowDelegate
{
public:
    void windowWillClose(Window& window) override
    {
        ++closes;
        wasVisible = window.isVisible();
        if (onClose)
            onClose();
    }
    void windowDidBecomeKey(Window&) override { ++becameKey; }
    void windowDidResignKey(Window&) override { ++resignedKey; }

    std::function<void()> onClose;
    int closes = 0;
    int becameKey = 0;
    int resignedKey = 0;
    bool wasVisible = false;
};

class WindowTest : public testing::Test
{
protected:
    WindowTest()
    {
        window->setDelegate(delegate);
        content->resize(300, 200);
    }

    void show(const std::shared_ptr<Window>& shown)
    {
        shown->makeKeyAndOrderFront();
        ASSERT_TRUE(tests::waitUntil([&] { return shown->isKeyWindow(); }));
    }

    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    QWidget* content = new QWidget;
    std::shared_ptr<Window> window = Window::create(QStringLiteral("Title"), content);
};

TEST_F(WindowTest, isFoundFromAnyViewInside)
{
    QWidget inner(content);

    EXPECT_EQ(Window::windowOf(&inner), window);
    EXPECT_EQ(Window::windowOf(content), window);
    EXPECT_EQ(Window::windowOf(nullptr), nullptr);
    QWidget stranger;
    EXPECT_EQ(Window::windowOf(&stranger), nullptr);
}

TEST_F(WindowTest, showsItsTitleAndContent)
{
    show(window);

    EXPECT_EQ(window->title(), QStringLiteral("Title"));
    EXPECT_TRUE(content->isVisible());
    EXPECT_EQ(window->contentView(), content);
}

TEST_F(WindowTest, tellsItsDelegateOnceThatItCloses)
{
    show(window);

    window->close();
    window->close();

    EXPECT_EQ(delegate->closes, 1);
    EXPECT_TRUE(delegate->wasVisible);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowTest, tellsItsDelegateOnceThatItsUserClosesIt)
{
    show(window);

    window->widget()->close();

    EXPECT_EQ(delegate->closes, 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowTest, tellsItsDelegateOnceThoughTheDelegateClosesItAgain)
{
    show(window);
    delegate->onClose = [&] { window->close(); };

    window->widget()->close();

    EXPECT_EQ(delegate->closes, 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowTest, closesAgainAfterItWasShownAgain)
{
    show(window);
    window->close();
    show(window);

    window->close();

    EXPECT_EQ(delegate->closes, 2);
}

TEST_F(WindowTest, mayLoseItsLastOwnerWhileItCloses)
{
    show(window);
    const std::weak_ptr<Window> gone = window;
    delegate->onClose = [&] { window.reset(); };

    window->widget()->close();
    tests::drainMainQueue();

    EXPECT_TRUE(gone.expired());
    EXPECT_EQ(delegate->closes, 1);
}

TEST_F(WindowTest, outlivesADelegateThatRunsAnEventLoopWhileItCloses)
{
    show(window);
    const std::weak_ptr<Window> watched = window;
    bool wasThere = false;
    delegate->onClose = [&] {
        window.reset();
        tests::drainMainQueue();
        wasThere = !watched.expired();
    };

    window->widget()->close();

    EXPECT_TRUE(wasThere);
    tests::drainMainQueue();
    EXPECT_TRUE(watched.expired());
}

TEST_F(WindowTest, doesWithoutADelegateThatIsGone)
{
    show(window);
    delegate.reset();

    window->close();

    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->delegate(), nullptr);
}

TEST_F(WindowTest, tellsItsDelegateWhenItGetsAndLosesTheKeyboard)
{
    show(window);
    EXPECT_EQ(delegate->becameKey, 1);
    EXPECT_EQ(delegate->resignedKey, 0);

    const auto other = Window::create();
    show(other);

    EXPECT_EQ(delegate->becameKey, 1);
    EXPECT_EQ(delegate->resignedKey, 1);
}

TEST_F(WindowTest, comesBackWhenItIsMinimized)
{
    show(window);
    window->widget()->showMinimized();
    tests::drainMainQueue();
    ASSERT_TRUE(window->widget()->isMinimized());

    window->makeKeyAndOrderFront();

    EXPECT_FALSE(window->widget()->isMinimized());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(WindowTest, comesBackAsLargeAsItWas)
{
    show(window);
    window->widget()->setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    tests::drainMainQueue();

    window->makeKeyAndOrderFront();

    EXPECT_FALSE(window->widget()->isMinimized());
    EXPECT_TRUE(window->widget()->isMaximized());
}

TEST_F(WindowTest, startsWithTheFirstControlThatTakesTheKeyboard)
{
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(new QWidget);
    auto* field = new QLineEdit;
    layout->addWidget(field);
    layout->addWidget(new QPushButton);

    show(window);

    EXPECT_TRUE(field->hasFocus());
}

TEST_F(WindowTest, returnInAFieldClicksTheDefaultButton)
{
    auto* layout = new QVBoxLayout(content);
    auto* field = new QLineEdit;
    auto* other = new QPushButton;
    auto* primary = new QPushButton;
    primary->setDefault(true);
    for (QWidget* control :
         {static_cast<QWidget*>(field), static_cast<QWidget*>(other), static_cast<QWidget*>(primary)})
        layout->addWidget(control);
    int clicks = 0;
    int otherClicks = 0;
    QObject::connect(primary, &QPushButton::clicked, [&] { ++clicks; });
    QObject::connect(other, &QPushButton::clicked, [&] { ++otherClicks; });
    show(window);

    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
    primary->setEnabled(false);
    QTest::keyClick(field, Qt::Key_Enter);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(otherClicks, 0);

    primary->setEnabled(true);
    other->setFocus();
    QTest::keyClick(other, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(otherClicks, 1);
}

TEST_F(WindowTest, escapeClicksTheVisibleCancelButton)
{
    auto* layout = new QVBoxLayout(content);
    auto* field = new QLineEdit;
    auto* cancel = new QPushButton;
    auto* hiddenCancel = new QPushButton;
    cancel->setShortcut(QKeySequence(Qt::Key_Escape));
    hiddenCancel->setShortcut(QKeySequence(Qt::Key_Escape));
    for (QWidget* control :
         {static_cast<QWidget*>(field), static_cast<QWidget*>(hiddenCancel), static_cast<QWidget*>(cancel)})
        layout->addWidget(control);
    hiddenCancel->hide();
    int clicks = 0;
    int hiddenClicks = 0;
    QObject::connect(cancel, &QPushButton::clicked, [&] { ++clicks; });
    QObject::connect(hiddenCancel, &QPushButton::clicked, [&] { ++hiddenClicks; });
    show(window);

    QTest::keyClick(field, Qt::Key_Escape);

    EXPECT_TRUE(tests::waitUntil([&] { return clicks == 1; }));
    EXPECT_EQ(hiddenClicks, 0);
}

TEST_F(WindowTest, survivesThatItsContentGoesFirst)
{
    show(window);

    delete content;

    EXPECT_EQ(window->contentView(), nullptr);
    window->setFrame(QRectF(0, 0, 100, 100), true, true);
    EXPECT_EQ(window->frame(), QRectF(0, 0, 100, 100));
}

} // namespace
