#include "tests/desktop/DesktopHands.h"
#include "tests/desktop/DesktopTest.h"
#include "tests/desktop/XServer.h"
#include "tests/layout/Layout.h"
#include "tests/states/Animations.h"
#include "tests/states/Scene.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include <cstdlib>

namespace {

using namespace tests;

/// What a window manager and its user do to a window, in each state of each window.
class StatesOnDesktopTest : public DesktopTest, public testing::WithParamInterface<State>
{
protected:
    void reach()
    {
        (scene.*GetParam().reach)();
        waitForAnimations();
        // The window manager may still be making the frame.
        ASSERT_TRUE(waitUntil([this] { return hasTitleBarOnScreen(); }));
    }

    QWidget* widget() const { return scene.window()->widget(); }

    void picture(const char* what) const
    {
        waitForAnimations();
        User::picture(
            QStringLiteral("desktop-%1-%2").arg(QString::fromLatin1(GetParam().name), QString::fromLatin1(what)));
    }

    /// The sheet hangs in the middle of its window's upper edge, whole; the keyboard is with something that is seen.
    void expectInOrder(const char* after)
    {
        SCOPED_TRACE(after);
        waitForAnimations();
        EXPECT_TRUE(waitUntil([this] { return isInFront(widget()); }));
        const auto isFocusSeen = [this] {
            const QWidget* focused = QApplication::focusWidget();
            return focused && focused->window() == widget() && isInSight(focused);
        };
        EXPECT_TRUE(waitUntil(isFocusSeen));
        EXPECT_TRUE(waitUntil([this] { return hasTitleBarOnScreen(); }));
        if (const auto sheet = scene.window()->attachedSheet()) {
            EXPECT_TRUE(waitUntil([&] { return hangsInTheMiddle(*sheet->widget()); }));
        }
    }

    static void expectNoFlawsIn(tljira::Window& window)
    {
        // What a smaller window leads to may not have been drawn yet.
        waitUntil([&] { return layoutFlaws(window).isEmpty(); });
        EXPECT_THAT(layoutFlaws(window), testing::IsEmpty());
    }

    bool hasTitleBarOnScreen() const
    {
        const QRect frame = frameOf(widget());
        return frame.top() < widget()->geometry().top() && widget()->screen()->geometry().contains(frame.topLeft()) &&
               widget()->screen()->geometry().contains(frame.topRight());
    }

    bool hangsInTheMiddle(const QWidget& sheet) const
    {
        const QRect rect = sheet.geometry();
        const int left = rect.left();
        const int right = widget()->width() - rect.left() - rect.width();
        return sheet.parentWidget() == widget() && rect.top() == 0 && std::abs(left - right) <= 1 &&
               widget()->rect().contains(rect);
    }

    DesktopHands hands{user};
    Scene scene{hands, server, [this] { logIn(); }};
};

INSTANTIATE_TEST_SUITE_P(States, StatesOnDesktopTest, testing::ValuesIn(allStates()),
                         [](const auto& test) { return test.param.name; });

TEST_P(StatesOnDesktopTest, isMovedAndResized)
{
    reach();
    picture("asItIs");
    expectInOrder("before");

    const QSize size = widget()->size();
    const QPoint corner = frameOf(widget()).topLeft() + QPoint(-70, 40);
    XServer::instance().place(widget()->winId(), corner, size);
    ASSERT_TRUE(waitUntil([&] { return frameOf(widget()).topLeft() == corner && widget()->size() == size; }))
        << QDebug::toString(frameOf(widget())).toStdString() << QDebug::toString(widget()->geometry()).toStdString();
    expectInOrder("moved");

    const QSize large = size + QSize(90, 60);
    XServer::instance().place(widget()->winId(), corner, large);
    ASSERT_TRUE(waitUntil([&] { return widget()->size() == large; }));
    expectInOrder("made larger");
    picture("larger");

    XServer::instance().place(widget()->winId(), corner, QSize(100, 50));
    // Texts that wrap may make it higher instead.
    ASSERT_TRUE(waitUntil([&] { return widget()->width() < large.width() && widget()->height() != large.height(); }));
    expectInOrder("made as small as it gets");
    expectNoFlawsIn(*scene.window());
    if (const auto sheet = scene.window()->attachedSheet())
        expectNoFlawsIn(*sheet);
    picture("smaller");
}

TEST_P(StatesOnDesktopTest, isMaximisedAndMinimisedAndComesBack)
{
    reach();
    const int width = widget()->width();
    XServer::instance().setMaximised(widget()->winId(), true);
    ASSERT_TRUE(waitUntil([&] { return widget()->width() > 1200; }));
    expectInOrder("maximised");
    picture("maximised");
    XServer::instance().setMaximised(widget()->winId(), false);
    ASSERT_TRUE(waitUntil([&] { return widget()->width() == width; }));
    expectInOrder("restored");

    XServer::instance().minimise(widget()->winId());
    ASSERT_TRUE(waitUntil([this] { return widget()->isMinimized() && !widget()->windowHandle()->isExposed(); }));
    XServer::instance().activate(widget()->winId());
    expectInOrder("back from the dock");
    EXPECT_EQ(widget()->width(), width);
}

TEST_P(StatesOnDesktopTest, isClosedByItsTitleBar)
{
    reach();
    closeAndExpectFreeHost(scene.window());
    server.release();
}

TEST_P(StatesOnDesktopTest, quitsAtOnce)
{
    bool isAsked = false;
    QTimer::singleShot(1, [&] {
        reach();
        isAsked = true;
        QApplication::quit();
    });
    // Only a refused request needs it.
    QTimer::singleShot(std::chrono::minutes(2), [] { QApplication::exit(EXIT_FAILURE); });
    EXPECT_EQ(QApplication::exec(), EXIT_SUCCESS);
    EXPECT_TRUE(isAsked);
    EXPECT_FALSE(widget()->isVisible());
    server.release();
}

TEST_P(StatesOnDesktopTest, asksForATitleBarWithoutMaximise)
{
    reach();
    EXPECT_FALSE(XServer::instance().mayBeMaximised(widget()->winId()));
    EXPECT_TRUE(XServer::instance().mayBeMaximised(host.winId()));
}

} // namespace
