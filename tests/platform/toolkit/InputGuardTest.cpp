#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/Keyboard.h"
#include "tests/platform/toolkit/TestForm.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

using namespace tests;

/// Keys that their user holds, presses twice, or presses for something that is gone.
class InputGuardTest : public testing::Test
{
protected:
    InputGuardTest()
    {
        form.window->makeKeyAndOrderFront();
        EXPECT_TRUE(waitUntil([this] { return form.window->isKeyWindow(); }));
        EXPECT_TRUE(form.hasFocus(form.field));
    }

    void begin() { form.window->beginSheet(sheet.window, {}); }
    void beginsSheet(const QPushButton* button)
    {
        QObject::connect(button, &QPushButton::clicked, [this] { begin(); });
    }
    void endsSheet(const QPushButton* button)
    {
        QObject::connect(button, &QPushButton::clicked, [this] { form.window->endSheet(sheet.window); });
    }

    TestForm form{"Form"};
    TestForm sheet{"Sheet", QSize(200, 200)};
    Keyboard keyboard{form.window->widget()};
};

TEST_F(InputGuardTest, aHeldReturnPressesTheDefaultButtonOnce)
{
    keyboard.press(Qt::Key_Return);
    for (int turn = 0; turn < 5; ++turn)
        keyboard.repeat(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);

    EXPECT_EQ(form.defaultClicks, 1);
    EXPECT_EQ(form.returns, 1);
}

TEST_F(InputGuardTest, aHeldEnterDoesSoToo)
{
    keyboard.press(Qt::Key_Enter);
    keyboard.repeat(Qt::Key_Enter);

    EXPECT_EQ(form.defaultClicks, 1);
    EXPECT_EQ(form.returns, 1);
}

TEST_F(InputGuardTest, aHeldReturnPressesAFocusedButtonOnce)
{
    form.plain->setFocus();

    keyboard.press(Qt::Key_Return);
    keyboard.repeat(Qt::Key_Return);

    EXPECT_EQ(form.plainClicks, 1);
    EXPECT_EQ(form.defaultClicks, 0);
}

TEST_F(InputGuardTest, aHeldSpacePressesAFocusedButtonOnce)
{
    form.plain->setFocus();

    keyboard.press(Qt::Key_Space);
    keyboard.repeat(Qt::Key_Space);
    keyboard.repeat(Qt::Key_Space);
    EXPECT_EQ(form.plainClicks, 0);
    keyboard.release(Qt::Key_Space);

    EXPECT_EQ(form.plainClicks, 1);
}

TEST_F(InputGuardTest, aHeldEscapePressesItsButtonOnce)
{
    keyboard.press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([this] { return form.cancelClicks == 1; }));
    keyboard.repeat(Qt::Key_Escape);
    keyboard.repeat(Qt::Key_Escape);
    drainMainQueue();

    EXPECT_EQ(form.cancelClicks, 1);
}

TEST_F(InputGuardTest, aHeldMnemonicPressesItsButtonOnce)
{
    keyboard.press(Qt::Key_P, Qt::AltModifier);
    ASSERT_TRUE(waitUntil([this] { return form.plainClicks == 1; }));
    for (int turn = 0; turn < 5; ++turn) {
        keyboard.repeat(Qt::Key_P, Qt::AltModifier);
        drainMainQueue();
    }
    EXPECT_TRUE(waitUntil([this] { return !form.plain->isDown(); }));

    EXPECT_EQ(form.plainClicks, 1);
}

TEST_F(InputGuardTest, aHeldReturnThatIsNotMarkedAsRepeatedPressesTheDefaultButtonOnce)
{
    keyboard.press(Qt::Key_Return);
    for (int turn = 0; turn < 5; ++turn)
        keyboard.repeatUnmarked(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);
    EXPECT_EQ(form.defaultClicks, 1);
    EXPECT_EQ(form.returns, 1);

    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(form.defaultClicks, 2);
}

TEST_F(InputGuardTest, aHeldSpaceThatIsNotMarkedAsRepeatedPressesAFocusedButtonOnce)
{
    form.plain->setFocus();

    keyboard.press(Qt::Key_Space);
    keyboard.repeatUnmarked(Qt::Key_Space);
    keyboard.repeatUnmarked(Qt::Key_Space);
    keyboard.release(Qt::Key_Space);

    EXPECT_EQ(form.plainClicks, 1);
}

TEST_F(InputGuardTest, aHeldMnemonicThatIsNotMarkedAsRepeatedIsNoShortcut)
{
    keyboard.press(Qt::Key_P, Qt::AltModifier);
    ASSERT_TRUE(waitUntil([this] { return form.plainClicks == 1; }));

    EXPECT_FALSE(keyboard.repeatUnmarked(Qt::Key_P, Qt::AltModifier));
}

TEST_F(InputGuardTest, aKeyThatIsNotMarkedAsRepeatedMeansNothingInASheetThatItBrought)
{
    const WithoutDoubledKeys noDoubledKeys;
    beginsSheet(form.primary);

    keyboard.press(Qt::Key_Return);
    ASSERT_EQ(form.window->attachedSheet(), sheet.window);
    for (int turn = 0; turn < 3; ++turn)
        keyboard.repeatUnmarked(Qt::Key_Return);
    keyboard.repeat(Qt::Key_Return);
    keyboard.repeatUnmarked(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);
    EXPECT_EQ(sheet.clicks() + sheet.returns, 0);

    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(sheet.defaultClicks, 1);
}

TEST_F(InputGuardTest, neitherDoesALetterThatIsNotMarked)
{
    keyboard.press(Qt::Key_A);
    begin();
    keyboard.repeatUnmarked(Qt::Key_A);
    keyboard.release(Qt::Key_A);
    EXPECT_EQ(sheet.field->text(), QString());
}

TEST_F(InputGuardTest, aHeldEscapeThatIsNotMarkedEndsTheSheetAlone)
{
    begin();
    endsSheet(sheet.cancel);

    keyboard.press(Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([this] { return form.window->attachedSheet() == nullptr; }));
    for (int turn = 0; turn < 3; ++turn)
        keyboard.repeatUnmarked(Qt::Key_Escape);
    keyboard.release(Qt::Key_Escape);
    drainMainQueue();

    EXPECT_EQ(form.cancelClicks, 0);
}

TEST_F(InputGuardTest, writingGoesOnAlsoWhereItIsNotMarked)
{
    keyboard.press(Qt::Key_A);
    keyboard.repeatUnmarked(Qt::Key_A);
    keyboard.repeatUnmarked(Qt::Key_A);
    keyboard.release(Qt::Key_A);

    EXPECT_EQ(form.field->text(), QStringLiteral("aaa"));
}

TEST_F(InputGuardTest, aSecondReleaseAndPressAtDifferentTimesAreNoRepeat)
{
    keyboard.press(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);
    keyboard.press(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);

    EXPECT_EQ(form.defaultClicks, 2);
}

TEST_F(InputGuardTest, writingAndMovingGoOnAsLongAsAKeyIsHeld)
{
    keyboard.press(Qt::Key_A);
    keyboard.repeat(Qt::Key_A);
    keyboard.press(Qt::Key_Space);
    keyboard.repeat(Qt::Key_Space);
    EXPECT_EQ(form.field->text(), QStringLiteral("aa  "));

    keyboard.press(Qt::Key_Backspace);
    keyboard.repeat(Qt::Key_Backspace);
    keyboard.press(Qt::Key_Left);
    keyboard.repeat(Qt::Key_Left);
    EXPECT_EQ(form.field->text(), QStringLiteral("aa"));
    EXPECT_EQ(form.field->cursorPosition(), 0);
}

TEST_F(InputGuardTest, aHeldReturnWritesLinesInATextOfManyLines)
{
    auto* const text = new QPlainTextEdit;
    form.content.layout()->addWidget(text);
    drainMainQueue();
    text->setFocus();

    keyboard.press(Qt::Key_Return);
    keyboard.repeat(Qt::Key_Return);

    EXPECT_EQ(text->blockCount(), 3);
    EXPECT_EQ(form.defaultClicks, 0);
}

TEST_F(InputGuardTest, aKeyThatWasPressedBeforeASheetCameMeansNothingInIt)
{
    const WithoutDoubledKeys noDoubledKeys;
    beginsSheet(form.primary);

    keyboard.press(Qt::Key_Return);
    ASSERT_EQ(form.window->attachedSheet(), sheet.window);
    keyboard.repeat(Qt::Key_Return);
    keyboard.repeat(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);
    EXPECT_EQ(sheet.clicks() + sheet.returns, 0);

    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(sheet.defaultClicks, 1);
}

TEST_F(InputGuardTest, neitherDoesALetter)
{
    keyboard.press(Qt::Key_A);
    begin();
    keyboard.repeat(Qt::Key_A);
    keyboard.release(Qt::Key_A);
    EXPECT_EQ(sheet.field->text(), QString());

    keyboard.click(Qt::Key_A);
    EXPECT_EQ(sheet.field->text(), QStringLiteral("a"));
}

TEST_F(InputGuardTest, neitherDoesTheReleaseOfSpace)
{
    form.plain->setFocus();
    keyboard.press(Qt::Key_Space);
    begin();
    sheet.plain->setFocus();
    keyboard.release(Qt::Key_Space);
    drainMainQueue();

    EXPECT_EQ(form.plainClicks + sheet.plainClicks, 0);
    EXPECT_FALSE(form.plain->isDown());
}

TEST_F(InputGuardTest, aShortcutsKeyThatBroughtTheSheetMeansNothingInIt)
{
    const WithoutDoubledKeys noDoubledKeys;
    beginsSheet(form.plain);

    keyboard.press(Qt::Key_P, Qt::AltModifier);
    ASSERT_TRUE(waitUntil([this] { return form.window->attachedSheet() != nullptr; }));
    keyboard.repeat(Qt::Key_P, Qt::AltModifier);
    keyboard.release(Qt::Key_P, Qt::AltModifier);
    drainMainQueue();
    EXPECT_EQ(sheet.clicks(), 0);

    keyboard.click(Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(waitUntil([this] { return sheet.plainClicks == 1; }));
}

TEST_F(InputGuardTest, aKeyThatEndedASheetMeansNothingInTheWindowBelow)
{
    begin();
    endsSheet(sheet.primary);

    keyboard.press(Qt::Key_Return);
    ASSERT_EQ(form.window->attachedSheet(), nullptr);
    keyboard.repeat(Qt::Key_Return);
    keyboard.release(Qt::Key_Return);

    EXPECT_EQ(form.clicks() + form.returns, 0);
}

TEST_F(InputGuardTest, returnPressedTwiceInARowIsForTheWindowAloneThatHadTheFirst)
{
    QApplication::setDoubleClickInterval(60'000);
    beginsSheet(form.primary);

    keyboard.click(Qt::Key_Return);
    ASSERT_EQ(form.window->attachedSheet(), sheet.window);
    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(sheet.clicks() + sheet.returns, 0);

    QApplication::setDoubleClickInterval(0);
    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(sheet.defaultClicks, 1);
}

TEST_F(InputGuardTest, keysPressedTwiceInARowCountTwiceWhileTheWindowStaysTheSame)
{
    QApplication::setDoubleClickInterval(60'000);

    keyboard.click(Qt::Key_Return);
    keyboard.click(Qt::Key_Return);

    EXPECT_EQ(form.defaultClicks, 2);
}

TEST_F(InputGuardTest, aHiddenButtonThatStillHasTheKeyboardIsNotPressed)
{
    form.plain->setFocus();
    // All at once, as when the view around them is hidden: nothing is left that could have the keyboard.
    form.content.hide();

    keyboard.click(Qt::Key_Return);
    keyboard.click(Qt::Key_Space);
    keyboard.click(Qt::Key_Escape);
    drainMainQueue();

    EXPECT_EQ(form.clicks(), 0);
}

TEST_F(InputGuardTest, aButtonThatIsHiddenWithWhatIsAroundItGetsNoKeyThatIsSentToIt)
{
    form.plain->setFocus();
    form.plain->hide();

    // Straight to the button, as an input method might.
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        QKeyEvent press(QEvent::KeyPress, key, {});
        QKeyEvent release(QEvent::KeyRelease, key, {});
        QApplication::sendEvent(form.plain, &press);
        QApplication::sendEvent(form.plain, &release);
    }

    EXPECT_EQ(form.clicks(), 0);
}

TEST_F(InputGuardTest, aDefaultButtonThatIsHiddenOrDisabledIsNotPressed)
{
    form.primary->setEnabled(false);
    keyboard.click(Qt::Key_Return);
    form.primary->setEnabled(true);
    form.primary->hide();
    keyboard.click(Qt::Key_Return);
    form.cancel->hide();
    keyboard.click(Qt::Key_Escape);
    drainMainQueue();

    EXPECT_EQ(form.clicks(), 0);
}

TEST_F(InputGuardTest, windowsOfTheHostAreLeftAlone)
{
    QWidget host;
    auto* const layout = new QVBoxLayout(&host);
    auto* const field = new QLineEdit;
    layout->addWidget(field);
    int returns = 0;
    QObject::connect(field, &QLineEdit::returnPressed, [&] { ++returns; });
    host.show();
    host.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return host.isActiveWindow(); }));
    field->setFocus();
    const Keyboard hosts(&host);

    hosts.press(Qt::Key_Return);
    hosts.repeat(Qt::Key_Return);

    EXPECT_EQ(returns, 2);
}

} // namespace
