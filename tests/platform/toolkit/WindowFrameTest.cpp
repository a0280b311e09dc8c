#include "platform/foundation/values/Format.h"
#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/WaitUntil.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

constexpr int titleBar = 24;

double screenHeight()
{
    return QGuiApplication::primaryScreen()->geometry().height();
}

/// The window system without decorations, and with a pretended title bar and borders.
class WindowFrame : public testing::TestWithParam<QMargins>
{
protected:
    WindowFrame() { pretendDecorations(GetParam()); }
    ~WindowFrame() override { pretendDecorations(std::nullopt); }

    QMargins margins() const { return GetParam(); }

    QWidget content;
    std::shared_ptr<Window> window = Window::create(QStringLiteral("Frames"), &content);
};

std::string decorationsName(const testing::TestParamInfo<QMargins>& decorations)
{
    static const char* const names[] = {"bare", "titleBar", "titleBarAndBorders"};
    return names[decorations.index];
}

INSTANTIATE_TEST_SUITE_P(decorations, WindowFrame,
                         testing::Values(QMargins(), QMargins(0, titleBar, 0, 0), QMargins(3, titleBar, 4, 5)),
                         decorationsName);

TEST(WindowFrameInTheMaking, isTheContentsRectangle)
{
    // What Qt measures where a window manager has only begun to make a frame of one pixel.
    pretendDecorations(QMargins(0, 0, -299, -199));
    QWidget content;
    const auto window = Window::create(QStringLiteral("Frames"), &content);
    window->widget()->setGeometry(100, 150, 300, 200);

    EXPECT_EQ(window->frame(), QRectF(100, screenHeight() - 350, 300, 200));
    pretendDecorations(std::nullopt);
}

TEST_P(WindowFrame, isMeasuredFromTheLowerLeftCornerOfTheScreen)
{
    window->widget()->setGeometry(100, 150, 300, 200);

    const QRectF frame = window->frame();

    EXPECT_EQ(frame.x(), 100 - margins().left());
    EXPECT_EQ(frame.y(), screenHeight() - 150 - 200 - margins().bottom());
    EXPECT_EQ(frame.width(), 300 + margins().left() + margins().right());
    EXPECT_EQ(frame.height(), 200 + margins().top() + margins().bottom());
}

TEST_P(WindowFrame, isWhatWasSetAndTheContentFillsIt)
{
    const QRectF frame(120, 130, 400, 300);

    window->setFrame(frame, true);

    EXPECT_EQ(window->frame(), frame);
    EXPECT_EQ(content.size(),
              QSize(400 - margins().left() - margins().right(), 300 - margins().top() - margins().bottom()));
    EXPECT_EQ(window->widget()->size(), content.size());
}

TEST_P(WindowFrame, staysTheSameWhenTheWindowIsShown)
{
    const QRectF frame(120, 130, 400, 300);
    window->setFrame(frame, true);

    window->makeKeyAndOrderFront();
    tests::drainMainQueue();

    EXPECT_EQ(window->frame(), frame);
}

TEST_P(WindowFrame, answersTheNewRectangleAtOnceWhileItsEdgesFollow)
{
    window->setFrame(QRectF(100, 100, 200, 150), true);
    window->makeKeyAndOrderFront();
    const QRectF target(50, 300, 500, 400);

    window->setFrame(target, true, true);

    EXPECT_EQ(window->frame(), target);
    const QSize contentSize(500 - margins().left() - margins().right(), 400 - margins().top() - margins().bottom());
    EXPECT_EQ(content.size(), contentSize);
    EXPECT_NE(window->widget()->size(), contentSize);
    EXPECT_TRUE(tests::waitUntil([&] {
        EXPECT_EQ(window->frame(), target);
        EXPECT_EQ(content.size(), contentSize);
        return window->widget()->size() == contentSize;
    }));
    tests::drainMainQueue();
    EXPECT_EQ(window->frame(), target);
}

TEST_P(WindowFrame, goesWhereTheLastOfTwoAnimationsLeads)
{
    window->setFrame(QRectF(100, 100, 200, 150), true);
    window->makeKeyAndOrderFront();
    const QRectF last(10, 20, 320, 240);

    window->setFrame(QRectF(50, 300, 500, 400), true, true);
    window->setFrame(last, true, true);

    EXPECT_EQ(window->frame(), last);
    const QSize size(320 - margins().left() - margins().right(), 240 - margins().top() - margins().bottom());
    EXPECT_TRUE(tests::waitUntil([&] { return window->widget()->size() == size; }));
    tests::drainMainQueue();
    EXPECT_EQ(window->frame(), last);
}

TEST_P(WindowFrame, keepsTheContentInStepWhenAnAnimationTakesOverFromAnother)
{
    window->setFrame(QRectF(100, 100, 200, 150), true);
    window->makeKeyAndOrderFront();
    const QSize start = window->widget()->size();
    window->setFrame(QRectF(50, 300, 500, 400), true, true);
    ASSERT_TRUE(tests::waitUntil([&] { return window->widget()->size() != start; }));
    const QSize underWay = window->widget()->size();

    window->setFrame(QRectF(10, 20, 320, 240), true, true);

    EXPECT_EQ(window->widget()->size(), underWay);
    EXPECT_EQ(content.size(),
              QSize(320 - margins().left() - margins().right(), 240 - margins().top() - margins().bottom()));
}

TEST_P(WindowFrame, setAtOnceEndsAnAnimation)
{
    window->setFrame(QRectF(100, 100, 200, 150), true);
    window->makeKeyAndOrderFront();
    const QRectF last(10, 20, 320, 240);
    window->setFrame(QRectF(50, 300, 500, 400), true, true);

    window->setFrame(last, true, false);
    EXPECT_EQ(window->widget()->size(), content.size());
    tests::drainMainQueue();

    EXPECT_EQ(window->frame(), last);
}

TEST_P(WindowFrame, ofAHiddenWindowIsSetAtOnceEvenWithAnimation)
{
    const QRectF frame(120, 130, 400, 300);

    window->setFrame(frame, true, true);

    EXPECT_EQ(window->widget()->size(), content.size());
    EXPECT_EQ(window->frame(), frame);
}

TEST_P(WindowFrame, isCentredWhenTheWindowIsFirstShownUnplaced)
{
    window->widget()->resize(300, 200);

    window->makeKeyAndOrderFront();

    QRect rect = window->widget()->geometry().marginsAdded(margins());
    EXPECT_EQ(rect.center(), QGuiApplication::primaryScreen()->availableGeometry().center());
}

TEST_P(WindowFrame, keepsItsTitleBarOnTheScreen)
{
    window->makeKeyAndOrderFront();
    const double top = screenHeight() - QGuiApplication::primaryScreen()->availableGeometry().top();
    const QRectF tooHigh(120, top - 200, 400, 300);

    window->setFrame(tooHigh, true);

    EXPECT_EQ(window->frame(), QRectF(120, top - 300, 400, 300));
    EXPECT_EQ(content.width(), 400 - margins().left() - margins().right());
}

TEST_P(WindowFrame, mayReachBelowTheScreen)
{
    const QRectF low(120, -100, 400, 300);

    window->setFrame(low, true);

    EXPECT_EQ(window->frame(), low);
}

TEST_P(WindowFrame, ofAMaximizedWindowIsRestoredFirst)
{
    window->makeKeyAndOrderFront();
    window->widget()->showMaximized();
    tests::drainMainQueue();
    ASSERT_TRUE(window->widget()->isMaximized());
    const QRectF frame(120, 130, 400, 300);

    window->setFrame(frame, true, true);

    EXPECT_FALSE(window->widget()->isMaximized());
    EXPECT_EQ(window->frame(), frame);
    EXPECT_TRUE(tests::waitUntil([&] { return window->widget()->size() == content.size(); }));
    EXPECT_EQ(window->frame(), frame);
}

class WindowContent : public testing::Test
{
protected:
    WindowContent() { pretendDecorations(QMargins()); }
    ~WindowContent() override { pretendDecorations(std::nullopt); }
};

TEST_F(WindowContent, isLaidOutWithTheFrameThoughNothingWasShownYet)
{
    QWidget content;
    auto* layout = new QVBoxLayout(&content);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* inner = new QWidget;
    layout->addWidget(inner);
    const auto window = Window::create(QString(), &content);

    window->setFrame(QRectF(0, 0, 321, 123), true);

    EXPECT_EQ(inner->size(), QSize(321, 123));
}

TEST_F(WindowContent, mayBeLargerThanTheFrameThatTheProgramSetsButNotThanTheUsersResizing)
{
    QWidget content;
    auto* layout = new QVBoxLayout(&content);
    auto* inner = new QWidget;
    inner->setMinimumSize(200, 100);
    layout->addWidget(inner);
    const auto window = Window::create(QString(), &content);
    window->makeKeyAndOrderFront();

    window->setFrame(QRectF(0, 0, 50, 40), true);
    EXPECT_EQ(window->frame(), QRectF(0, 0, 50, 40));
    EXPECT_EQ(window->widget()->minimumSize(), QSize(50, 40));

    window->setFrame(QRectF(0, 0, 500, 400), true);
    EXPECT_EQ(window->widget()->minimumSize(), content.minimumSizeHint());
}

TEST_F(WindowContent, givesTheWindowItsSize)
{
    QWidget content;
    content.resize(345, 234);

    EXPECT_EQ(Window::create(QString(), &content)->frame().size(), QSizeF(345, 234));
}

TEST(WindowFrameText, isThePlatforms)
{
    EXPECT_EQ(describe(QRectF(10, 20, 300, 200.5)), QStringLiteral("{{10, 20}, {300, 200.5}}"));
}

} // namespace
