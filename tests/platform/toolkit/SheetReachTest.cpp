#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/windows/AlertView.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/Keyboard.h"
#include "tests/platform/toolkit/TestForm.h"

#include <QAccessible>
#include <QWindow>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tests;

/// What a sheet covers, and what it does not.
class SheetReach : public testing::Test
{
protected:
    SheetReach()
    {
        below.window->makeKeyAndOrderFront();
        EXPECT_TRUE(waitUntil([this] { return below.window->isKeyWindow(); }));
    }

    void begin() { below.window->beginSheet(sheet.window, {}); }

    void clickAt(const QWidget* control) const
    {
        QWidget* const window = below.window->widget();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, control->mapTo(window, control->rect().center()));
    }

    bool isFocusInSheet() const { return sheet.window->widget()->isAncestorOf(QApplication::focusWidget()); }

    WithoutDoubledKeys noDoubledKeys;
    TestForm below{"Below", QSize(500, 400)};
    TestForm sheet{"Sheet", QSize(300, 200)};
    Keyboard keyboard{below.window->widget()};
};

TEST_F(SheetReach, theKeyboardGoesToTheSheetAndComesBack)
{
    below.plain->setFocus();

    begin();
    EXPECT_TRUE(sheet.hasFocus(sheet.field));
    keyboard.click(Qt::Key_A);
    EXPECT_EQ(sheet.field->text(), QStringLiteral("a"));

    below.window->endSheet(sheet.window);
    EXPECT_TRUE(below.hasFocus(below.plain));
}

TEST_F(SheetReach, theKeyboardComesBackToSomethingElseIfWhatHadItIsDisabled)
{
    below.plain->setFocus();
    begin();
    below.plain->setEnabled(false);

    below.window->endSheet(sheet.window);

    EXPECT_TRUE(below.hasFocus(below.field));
}

TEST_F(SheetReach, theKeyboardIsNotLeftWithASheetWhoseWindowClosesBehindAnotherOne)
{
    below.window->beginSheet(sheet.window, [this](int) { below.window->close(); });
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return QApplication::activeWindow() == &other; }));
    below.window->endSheet(sheet.window);

    // Who asks the window for it meets no view that may go before the window does.
    EXPECT_FALSE(sheet.window->widget()->isAncestorOf(below.window->widget()->focusWidget()));
}

TEST_F(SheetReach, tabGoesRoundInTheSheet)
{
    begin();
    QSet<const QWidget*> seen;
    for (int turn = 0; turn < 9; ++turn) {
        seen.insert(QApplication::focusWidget());
        keyboard.click(turn < 5 ? Qt::Key_Tab : Qt::Key_Backtab, turn < 5 ? Qt::NoModifier : Qt::ShiftModifier);
    }

    EXPECT_EQ(seen, (QSet<const QWidget*>{sheet.field, sheet.plain, sheet.primary, sheet.cancel}));
}

TEST_F(SheetReach, tabStaysInASheetWithoutControls)
{
    QWidget empty;
    empty.resize(100, 100);
    const auto blank = tljira::Window::create(QString(), &empty);
    below.window->beginSheet(blank, {});

    keyboard.click(Qt::Key_Tab);
    keyboard.click(Qt::Key_Space);
    keyboard.click(Qt::Key_Return);

    EXPECT_EQ(QApplication::focusWidget(), blank->widget());
    EXPECT_EQ(below.clicks(), 0);
}

TEST_F(SheetReach, shortcutsOfWhatIsCoveredDoNothing)
{
    begin();
    sheet.plain->setText(QStringLiteral("Other"));
    keyboard.click(Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(below.plainClicks, 0);

    below.window->endSheet(sheet.window);
    keyboard.click(Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(waitUntil([this] { return below.plainClicks == 1; }));
}

TEST_F(SheetReach, theSheetsOwnShortcutsWorkThoughTheSameAreCovered)
{
    begin();

    keyboard.click(Qt::Key_P, Qt::AltModifier);

    EXPECT_TRUE(waitUntil([this] { return sheet.plainClicks == 1; }));
    EXPECT_EQ(below.clicks(), 0);
}

TEST_F(SheetReach, returnAndEscapeAreTheSheets)
{
    begin();

    keyboard.click(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return sheet.defaultClicks == 1; }));
    keyboard.click(Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([this] { return sheet.cancelClicks == 1; }));
    EXPECT_EQ(below.clicks(), 0);
}

TEST_F(SheetReach, returnAndEscapeDoNothingInASheetWithoutButtons)
{
    begin();
    for (QPushButton* button : {sheet.plain, sheet.primary, sheet.cancel})
        button->hide();
    drainMainQueue();

    keyboard.click(Qt::Key_Return);
    keyboard.click(Qt::Key_Escape);
    drainMainQueue();

    EXPECT_EQ(below.clicks() + sheet.clicks(), 0);
}

TEST_F(SheetReach, theMouseReachesTheSheetOnly)
{
    begin();
    // Where the sheet lies and where it does not.
    for (QWidget* control : {static_cast<QWidget*>(below.plain), static_cast<QWidget*>(below.cancel)})
        clickAt(control);
    EXPECT_EQ(below.clicks(), 0);

    clickAt(sheet.plain);
    EXPECT_EQ(sheet.plainClicks, 1);
    clickAt(below.field);
    EXPECT_TRUE(isFocusInSheet());
}

TEST_F(SheetReach, aButtonThatIsHeldDownWhenTheSheetComesIsNotClicked)
{
    QWindow* const handle = below.window->widget()->windowHandle();
    const QPoint point = below.cancel->mapTo(below.window->widget(), below.cancel->rect().center());
    QTest::mousePress(handle, Qt::LeftButton, {}, point);
    ASSERT_TRUE(below.cancel->isDown());

    begin();
    QTest::mouseRelease(handle, Qt::LeftButton, {}, point);

    EXPECT_EQ(below.cancelClicks, 0);
}

TEST_F(SheetReach, whatIsCoveredStaysVisibleAndEnabled)
{
    begin();

    for (QWidget* control : {static_cast<QWidget*>(below.field), static_cast<QWidget*>(below.primary)}) {
        EXPECT_TRUE(control->isVisible());
        EXPECT_TRUE(control->isEnabled());
    }
}

TEST_F(SheetReach, theProgramCannotPutTheKeyboardBelowTheSheet)
{
    below.plain->setFocus();
    begin();

    below.field->setFocus();
    keyboard.click(Qt::Key_A);
    EXPECT_EQ(below.field->text(), QString());
    EXPECT_TRUE(isFocusInSheet());

    below.window->endSheet(sheet.window);
    EXPECT_TRUE(below.hasFocus(below.field));
}

TEST_F(SheetReach, contentThatIsPutInLaterIsCoveredToo)
{
    begin();
    TestForm later("Later", QSize(500, 400));
    below.window->setContentView(&later.content);
    sheet.plain->setText(QStringLiteral("Other"));

    keyboard.click(Qt::Key_P, Qt::AltModifier);
    clickAt(later.cancel);
    EXPECT_EQ(later.clicks(), 0);

    below.window->endSheet(sheet.window);
    clickAt(later.cancel);
    EXPECT_EQ(later.cancelClicks, 1);
}

TEST_F(SheetReach, aSheetCoversTheSheetBelowIt)
{
    TestForm inner("Inner", QSize(200, 150));
    begin();
    sheet.window->beginSheet(inner.window, {});
    EXPECT_TRUE(inner.hasFocus(inner.field));

    keyboard.click(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return inner.defaultClicks == 1; }));
    for (int turn = 0; turn < 6; ++turn) {
        keyboard.click(Qt::Key_Tab);
        EXPECT_TRUE(inner.window->widget()->isAncestorOf(QApplication::focusWidget()));
    }
    keyboard.click(Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return inner.cancelClicks == 1; }));
    EXPECT_EQ(sheet.clicks() + below.clicks(), 0);

    sheet.window->endSheet(inner.window);
    EXPECT_TRUE(sheet.hasFocus(sheet.field));
    keyboard.click(Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return sheet.cancelClicks == 1; }));
}

TEST_F(SheetReach, onlyTheUppermostSheetHasTheKeyboardOfTheDesktop)
{
    EXPECT_TRUE(below.window->isKeyWindow());

    begin();
    EXPECT_FALSE(below.window->isKeyWindow());
    EXPECT_TRUE(sheet.window->isKeyWindow());

    below.window->endSheet(sheet.window);
    EXPECT_TRUE(below.window->isKeyWindow());
    EXPECT_FALSE(sheet.window->isKeyWindow());
}

TEST_F(SheetReach, screenReadersFindTheSheetAndNothingBelowIt)
{
    const auto* window = QAccessible::queryAccessibleInterface(below.window->widget());
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->role(), QAccessible::Dialog);
    EXPECT_EQ(window->text(QAccessible::Name), QStringLiteral("Below"));
    ASSERT_EQ(window->childCount(), 1);
    EXPECT_EQ(window->child(0)->object(), &below.content);

    begin();
    ASSERT_EQ(window->childCount(), 1);
    QAccessibleInterface* const inner = window->child(0);
    EXPECT_EQ(inner->object(), sheet.window->widget());
    EXPECT_EQ(window->indexOfChild(inner), 0);
    EXPECT_EQ(inner->role(), QAccessible::Dialog);
    EXPECT_TRUE(inner->state().modal);
    EXPECT_EQ(inner->text(QAccessible::Name), QStringLiteral("Sheet"));
    ASSERT_EQ(inner->childCount(), 1);
    EXPECT_EQ(inner->child(0)->object(), &sheet.content);

    below.window->endSheet(sheet.window);
    ASSERT_EQ(window->childCount(), 1);
    EXPECT_EQ(window->child(0)->object(), &below.content);
}

TEST_F(SheetReach, screenReadersHearOfAnAlertOnceNothingCoversIt)
{
    auto* alert = new tljira::AlertView(below.window->contentView());
    alert->setAccessibleName(QStringLiteral("It went wrong."));
    alert->hide();
    QStringList heard;
    QObject::connect(alert, &tljira::AlertView::announced, alert, [&](const QString& words) { heard.append(words); });
    begin();
    alert->show();
    alert->announce();
    drainMainQueue();
    EXPECT_THAT(heard, testing::IsEmpty());

    below.window->endSheet(sheet.window);
    EXPECT_THAT(heard, testing::ElementsAre(QStringLiteral("It went wrong.")));
    begin();
    below.window->endSheet(sheet.window);
    EXPECT_THAT(heard, testing::SizeIs(1));
}

TEST_F(SheetReach, nothingIsDimmedTwice)
{
    QWidget* const content = below.window->contentView();
    QWidget shade(content);
    shade.setGeometry(0, 350, 100, 50);
    tljira::Layer::wantLayer(&shade)->setBackgroundColor(QColor(0, 0, 0, 100));
    shade.show();
    const auto colorOf = [&](int x) { return content->grab().toImage().pixelColor(x, 380); };
    EXPECT_NE(colorOf(20), colorOf(140));
    tljira::Layer::layerOf(&shade)->setIsShade(true);
    EXPECT_NE(colorOf(20), colorOf(140));
    begin();
    EXPECT_EQ(colorOf(20), colorOf(140));
    below.window->endSheet(sheet.window);
    EXPECT_NE(colorOf(20), colorOf(140));
}

} // namespace
