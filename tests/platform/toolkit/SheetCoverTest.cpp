#include "platform/toolkit/windows/SheetCover.h"

#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/TestForm.h"

#include <QApplication>
#include <QProxyStyle>
#include <QScreen>
#include <QStyle>
#include <QVariantAnimation>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

using namespace tests;

/// Animates so slowly that what is to happen under way does so on every machine.
class SlowStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        constexpr int duration = 3000;
        return hint == SH_Widget_Animation_Duration ? duration : QProxyStyle::styleHint(hint, option, widget, answer);
    }
};

/// A sheet that slides in and out, on a style that animates.
class SheetCoverTest : public testing::Test
{
protected:
    SheetCoverTest()
    {
        QApplication::setStyle(new SlowStyle);
        paint(Qt::red);
        sheet.content.setAutoFillBackground(true);
        below.window->makeKeyAndOrderFront();
        EXPECT_TRUE(waitUntil([this] { return below.window->isKeyWindow(); }));
    }

    void paint(const QColor& color)
    {
        QPalette palette;
        palette.setColor(QPalette::Window, color);
        sheet.content.setPalette(palette);
    }

    /// Begins the sheet; returns when a part of it is in sight.
    void beginAndWaitForSlide()
    {
        below.window->beginSheet(sheet.window, {});
        ASSERT_TRUE(waitUntil([this] { return isSliding() && colorIn(*below.window) == QColor(Qt::red); }));
    }

    bool isSliding() const { return below.window->widget()->findChild<QWidget*>(QStringLiteral("sheetSlide")); }
    bool hasCover() const { return below.window->widget()->findChild<QWidget*>(QStringLiteral("sheetCover")); }

    /// Ends after all animations that are under way.
    void waitForAnEqualAnimation()
    {
        QVariantAnimation animation;
        animation.setDuration(QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration));
        animation.setStartValue(0);
        animation.setEndValue(1);
        animation.start();
        ASSERT_TRUE(waitUntil([&] { return animation.state() == QAbstractAnimation::Stopped; }));
        drainMainQueue();
    }

    /// What the screen shows where nothing stands in the window, and in its sheet from the slide's beginning to its
    /// end.
    static QColor colorIn(const tljira::Window& window)
    {
        const QWidget* widget = window.widget();
        const int left = std::max(0, (widget->width() - sheetWidth) / 2);
        const QPixmap screen = widget->screen()->grabWindow(widget->winId());
        return screen.toImage().pixelColor(QPoint(left + 4, 4));
    }

    static constexpr int sheetWidth = 300;
    TestForm below{"Below", QSize(500, 400)};
    TestForm sheet{"Sheet", QSize(sheetWidth, 200)};
};

TEST_F(SheetCoverTest, whatChangesWhileTheSheetSlidesInIsDrawn)
{
    beginAndWaitForSlide();
    paint(Qt::green);

    EXPECT_TRUE(waitUntil([this] { return !isSliding(); }));
    EXPECT_TRUE(waitUntil([this] { return colorIn(*below.window) == QColor(Qt::green); }));
}

TEST_F(SheetCoverTest, keysAndTheMouseReachTheSheetWhileItSlidesIn)
{
    beginAndWaitForSlide();

    EXPECT_TRUE(sheet.hasFocus(sheet.field));
    QWidget* const window = below.window->widget();
    const QPoint onButton = sheet.plain->mapTo(window, sheet.plain->rect().center());
    EXPECT_EQ(window->childAt(onButton), sheet.plain);
}

TEST_F(SheetCoverTest, followsASheetThatChangesItsSizeWhileItSlidesIn)
{
    beginAndWaitForSlide();

    QRectF frame = sheet.window->frame();
    frame.setHeight(300);
    sheet.window->setFrame(frame, true);

    const auto* slide = below.window->widget()->findChild<QWidget*>(QStringLiteral("sheetSlide"));
    ASSERT_NE(slide, nullptr);
    EXPECT_EQ(slide->geometry(), sheet.window->widget()->geometry());
    waitForAnEqualAnimation();
    EXPECT_FALSE(isSliding());
}

TEST_F(SheetCoverTest, aSheetThatEndsWhileItSlidesInIsItselfAtOnce)
{
    beginAndWaitForSlide();

    below.window->endSheet(sheet.window);

    EXPECT_FALSE(isSliding());
    paint(Qt::green);
    sheet.window->makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([this] { return colorIn(*sheet.window) == QColor(Qt::green); }));
    EXPECT_TRUE(waitUntil([this] { return !hasCover(); }));
}

TEST_F(SheetCoverTest, aSheetThatEndsWhileItSlidesInLeavesTheWindowAsItWas)
{
    const QColor before = colorIn(*below.window);
    beginAndWaitForSlide();

    below.window->endSheet(sheet.window);

    EXPECT_TRUE(waitUntil([this] { return !hasCover(); }));
    EXPECT_TRUE(waitUntil([&] { return colorIn(*below.window) == before; }));
}

TEST_F(SheetCoverTest, aSheetThatEndsWhileItSlidesInSlidesInAgain)
{
    beginAndWaitForSlide();
    below.window->endSheet(sheet.window);

    below.window->beginSheet(sheet.window, {});

    EXPECT_TRUE(isSliding());
    waitForAnEqualAnimation();
    EXPECT_FALSE(isSliding());
    EXPECT_EQ(colorIn(*below.window), QColor(Qt::red));
    EXPECT_EQ(below.window->widget()->findChildren<QWidget*>(QStringLiteral("sheetCover")).size(), 1);
}

TEST_F(SheetCoverTest, aSheetThatGoesWhileItSlidesInTakesNothingAlong)
{
    auto other = std::make_unique<TestForm>("Other", QSize(sheetWidth, 200));
    below.window->beginSheet(other->window, {});
    ASSERT_TRUE(waitUntil([&] { return isSliding(); }));

    below.window->endSheet(other->window);
    other.reset();

    EXPECT_TRUE(waitUntil([this] { return !hasCover(); }));
    EXPECT_TRUE(below.window->isKeyWindow());
}

} // namespace
