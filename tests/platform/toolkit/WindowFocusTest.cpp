#include "platform/toolkit/windows/WindowFocus.h"

#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/Keyboard.h"
#include "tests/platform/toolkit/TestForm.h"

#include <QApplication>
#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace {

using namespace tests;

/// Where the keyboard goes when what had it is no longer to be had.
class WindowFocusTest : public testing::Test
{
protected:
    WindowFocusTest()
    {
        form.window->makeKeyAndOrderFront();
        EXPECT_TRUE(waitUntil([this] { return form.window->isKeyWindow(); }));
    }

    bool comesTo(const QWidget* control)
    {
        drainMainQueue();
        return QApplication::focusWidget() == control;
    }

    TestForm form{"Form"};
    Keyboard keyboard{form.window->widget()};
};

TEST_F(WindowFocusTest, aWindowBeginsWithItsFirstField)
{
    EXPECT_TRUE(comesTo(form.field));
}

TEST_F(WindowFocusTest, aHiddenControlGivesItToTheFieldThatHadItBefore)
{
    auto* const second = new QLineEdit;
    form.content.layout()->addWidget(second);
    drainMainQueue();
    second->setFocus();
    form.plain->setFocus();

    form.plain->hide();

    EXPECT_TRUE(comesTo(second));
}

TEST_F(WindowFocusTest, aDisabledControlGivesItToAField)
{
    form.primary->setFocus();

    form.primary->setEnabled(false);

    EXPECT_TRUE(comesTo(form.field));
}

TEST_F(WindowFocusTest, aDisabledFieldGivesItToTheDefaultButton)
{
    form.field->setEnabled(false);

    EXPECT_TRUE(comesTo(form.primary));
}

TEST_F(WindowFocusTest, withoutADefaultButtonItGoesToTheFirstControl)
{
    form.primary->setDefault(false);
    form.field->setEnabled(false);

    EXPECT_TRUE(comesTo(form.plain));
}

TEST_F(WindowFocusTest, aFieldThatOnlyShowsTextIsNoField)
{
    form.primary->setFocus();
    form.field->setReadOnly(true);
    form.primary->setEnabled(false);
    form.primary->setDefault(false);
    form.cancel->setDefault(true);

    EXPECT_TRUE(comesTo(form.cancel));
}

TEST_F(WindowFocusTest, aViewThatIsHiddenAndShownInOneGoKeepsIt)
{
    form.plain->setFocus();

    form.content.hide();
    form.content.show();
    EXPECT_TRUE(comesTo(form.plain));

    form.plain->hide();
    form.plain->show();
    EXPECT_TRUE(comesTo(form.plain));
}

TEST_F(WindowFocusTest, itGoesToTheViewThatIsShownInPlaceOfAHiddenOne)
{
    TestForm other("Other");
    other.content.setParent(form.window->widget());
    other.content.hide();
    form.plain->setFocus();

    form.content.hide();
    other.content.show();

    EXPECT_TRUE(comesTo(other.field));
}

TEST_F(WindowFocusTest, itGoesToTheFirstControlThatAppearsWhereNoneWas)
{
    form.content.hide();
    drainMainQueue();

    form.content.show();

    EXPECT_TRUE(comesTo(form.field));
}

TEST_F(WindowFocusTest, itGoesToTheFirstControlThatIsEnabledWhereNoneWas)
{
    form.content.setEnabled(false);
    drainMainQueue();

    form.content.setEnabled(true);

    EXPECT_TRUE(comesTo(form.field));
}

TEST_F(WindowFocusTest, aDeletedControlGivesItToAnother)
{
    form.cancel->setFocus();

    delete form.cancel;

    EXPECT_TRUE(comesTo(form.field));
}

TEST_F(WindowFocusTest, aControlThatIsMovedToAnotherWindowGivesItToAnother)
{
    form.cancel->setFocus();

    form.cancel->setParent(nullptr);

    EXPECT_TRUE(comesTo(form.field));
    delete form.cancel;
}

TEST_F(WindowFocusTest, whatTheProgramChoosesStays)
{
    form.plain->setFocus();
    form.plain->hide();
    form.cancel->setFocus();

    EXPECT_TRUE(comesTo(form.cancel));
}

TEST_F(WindowFocusTest, returnDoesNotPressAButtonThatOnlyGotItForWantOfAnother)
{
    form.primary->setDefault(false);
    form.field->hide();
    ASSERT_TRUE(comesTo(form.plain));

    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(form.clicks(), 0);

    keyboard.click(Qt::Key_Tab);
    keyboard.click(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(comesTo(form.plain));
    const WithoutDoubledKeys noDoubledKeys;
    keyboard.click(Qt::Key_Return);
    EXPECT_EQ(form.plainClicks, 1);
}

TEST_F(WindowFocusTest, aSheetBeginsWithItsOwnFirstField)
{
    TestForm sheet("Sheet", QSize(200, 200));
    form.window->beginSheet(sheet.window, {});
    EXPECT_TRUE(comesTo(sheet.field));

    sheet.plain->setFocus();
    sheet.plain->hide();
    EXPECT_TRUE(comesTo(sheet.field));
}

TEST_F(WindowFocusTest, aSheetBeginsWithWhatTheProgramChoseBefore)
{
    TestForm sheet("Sheet", QSize(200, 200));
    sheet.cancel->setFocus();

    form.window->beginSheet(sheet.window, {});

    EXPECT_TRUE(comesTo(sheet.cancel));
}

TEST_F(WindowFocusTest, aSheetOfAHiddenWindowHasItOnceTheWindowIsShown)
{
    TestForm sheet("Sheet", QSize(200, 200));
    form.window->close();
    form.window->beginSheet(sheet.window, {});

    form.window->makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return sheet.window->isKeyWindow(); }));

    EXPECT_TRUE(comesTo(sheet.field));
}

TEST_F(WindowFocusTest, dialogsThatAWindowOpensKeepTheirs)
{
    QWidget dialog(form.window->widget(), Qt::Dialog);
    auto* const layout = new QVBoxLayout(&dialog);
    auto* const field = new QLineEdit;
    layout->addWidget(field);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return dialog.isActiveWindow(); }));

    field->setFocus();

    EXPECT_TRUE(comesTo(field));
    EXPECT_EQ(tljira::WindowFocus::windowAround(field), nullptr);
}

} // namespace
