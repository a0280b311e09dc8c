#include "platform/toolkit/views/FitContent.h"

#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

using namespace tljira;

class FitContentTest : public testing::Test
{
protected:
    FitContentTest()
    {
        pretendDecorations(QMargins());
        label->setWordWrap(true);
        layout->addWidget(label);
        content.resize(300, 100);
        window = Window::create(QStringLiteral("Window"), &content);
        window->makeKeyAndOrderFront();
        window->setFrame(QRectF(100, 200, 300, 100), false);
    }

    ~FitContentTest() override { pretendDecorations(std::nullopt); }

    void say(int words) { label->setText(QStringLiteral("some words ").repeated(words)); }

    QWidget content;
    QVBoxLayout* layout = new QVBoxLayout(&content);
    QLabel* label = new QLabel(&content);
    std::shared_ptr<Window> window;
};

TEST_F(FitContentTest, needsTheHeightOfTextsThatWrap)
{
    say(1);
    EXPECT_LT(neededSize(&content).height(), 100);
    say(200);
    EXPECT_EQ(neededSize(&content).width(), 300);
    EXPECT_GE(neededSize(&content).height(), label->heightForWidth(300 - 2 * layout->contentsMargins().left()));
    EXPECT_EQ(neededSize(nullptr), QSize());
}

TEST_F(FitContentTest, growsTheWindowDownwards)
{
    say(200);
    const int needed = neededSize(&content).height();
    growToFit(window, false);
    EXPECT_EQ(window->frame(), QRectF(100, 200 + 100 - needed, 300, needed));
    EXPECT_EQ(content.height(), needed);
}

TEST_F(FitContentTest, leavesTheFirstPlaceOfAWindowToIt)
{
    const auto unplaced = Window::create(QStringLiteral("Unplaced"), &content);
    say(200);
    growToFit(unplaced, false);
    const QRectF before = unplaced->frame();
    EXPECT_GE(content.height(), neededSize(&content).height());
    unplaced->makeKeyAndOrderFront();
    EXPECT_EQ(unplaced->frame().size(), before.size());
    EXPECT_NE(unplaced->frame().topLeft(), before.topLeft());
}

TEST_F(FitContentTest, growsTheWindowForWordsThatDoNotWrap)
{
    label->setText(QStringLiteral("Donaudampfschifffahrtsgesellschaftskapitänswitwenrentenauszahlungsstelle"));
    growToFit(window, false);
    EXPECT_GT(window->frame().width(), 300);
    EXPECT_EQ(window->frame().x(), 100);
    EXPECT_GE(label->width(), label->minimumSizeHint().width());
}

TEST_F(FitContentTest, leavesAWindowThatIsLargeEnough)
{
    say(1);
    growToFit(window, false);
    EXPECT_EQ(window->frame(), QRectF(100, 200, 300, 100));
    growToFit(nullptr, false);
}

TEST_F(FitContentTest, keepsRoomForTextsThatWrapWhenItsUserMakesTheWindowNarrower)
{
    say(20);
    growToFit(window, false);
    tests::drainMainQueue();
    const int before = window->widget()->height();
    window->widget()->resize(150, before);
    tests::drainMainQueue();
    EXPECT_LT(content.width(), 300);
    EXPECT_GT(window->widget()->height(), before);
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
}

TEST_F(FitContentTest, growsTheWindowWithTheFont)
{
    say(20);
    growToFit(window, false);
    const QRectF before = window->frame();
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSize(24);
    QApplication::setFont(large);
    tests::drainMainQueue();
    EXPECT_GT(window->frame().height(), before.height());
    EXPECT_EQ(window->frame().y() + window->frame().height(), before.y() + before.height());
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    QApplication::setFont(usual);
}

} // namespace
