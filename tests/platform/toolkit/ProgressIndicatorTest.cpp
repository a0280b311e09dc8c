#include "platform/toolkit/views/ProgressIndicator.h"

#include "tests/kit/WaitUntil.h"

#include <QAccessible>
#include <QImage>
#include <QProgressBar>

#include <gmock/gmock.h>

namespace {

using tljira::ProgressIndicator;

QImage picture(QWidget& view)
{
    return view.grab().toImage();
}

TEST(ProgressIndicator, drawsNothingUntilItIsStarted)
{
    ProgressIndicator indicator;
    indicator.resize(40, 40);
    const QImage atRest = picture(indicator);

    indicator.startAnimation();

    EXPECT_TRUE(indicator.isAnimating());
    EXPECT_NE(picture(indicator), atRest);
    indicator.stopAnimation();
    EXPECT_FALSE(indicator.isAnimating());
    EXPECT_EQ(picture(indicator), atRest);
}

TEST(ProgressIndicator, turnsWhileItIsVisible)
{
    ProgressIndicator indicator;
    indicator.resize(40, 40);
    indicator.startAnimation();
    indicator.show();
    const QImage first = picture(indicator);

    EXPECT_TRUE(tests::waitUntil([&] { return picture(indicator) != first; }));
}

TEST(ProgressIndicator, goesOnTurningAfterItWasHidden)
{
    ProgressIndicator indicator;
    indicator.resize(40, 40);
    indicator.show();
    indicator.startAnimation();
    indicator.hide();
    EXPECT_TRUE(indicator.isAnimating());

    indicator.show();
    const QImage first = picture(indicator);

    EXPECT_TRUE(tests::waitUntil([&] { return picture(indicator) != first; }));
}

TEST(ProgressIndicator, isDrawnInThePalettesTextColour)
{
    ProgressIndicator indicator;
    indicator.resize(40, 40);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::green);
    indicator.setPalette(palette);
    indicator.startAnimation();

    const QImage image = picture(indicator);

    int green = 0;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            const QColor color = image.pixelColor(x, y);
            EXPECT_EQ(color.red(), 0);
            green += color.green() > 200 ? 1 : 0;
        }
    }
    EXPECT_GT(green, 0);
}

// The bar with a known end is Qt's; this is what the panels rely on.
TEST(ProgressBar, keepsItsLastValueWhenGivenOneOutsideItsRangeUnlessClamped)
{
    QProgressBar bar;
    bar.setRange(0, 100);
    bar.setValue(50);
    bar.setValue(150);
    EXPECT_EQ(bar.value(), 50);
}

TEST(ProgressIndicator, isAnAnimationForScreenReaders)
{
    ProgressIndicator indicator;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&indicator)->role(), QAccessible::Animation);
}

} // namespace
