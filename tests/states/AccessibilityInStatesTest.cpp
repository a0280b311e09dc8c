#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "platform/toolkit/tables/TableView.h"
#include "tests/states/Animations.h"
#include "tests/states/InSight.h"
#include "tests/states/Scene.h"
#include "tests/states/WindowHands.h"

#include <QAccessible>
#include <QApplication>
#include <QScrollArea>

namespace {

using namespace tests;

/// What a screen reader finds in each state of each window.
class AccessibilityInStatesTest : public JiraTest, public testing::WithParamInterface<State>
{
protected:
    AccessibilityInStatesTest()
    {
        QApplication::setDoubleClickInterval(0);
        tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    }

    void SetUp() override
    {
        (scene.*GetParam().reach)();
        waitForAnimations();
    }

    QWidget* content() const { return scene.window()->widget(); }

    /// All that the window tells of, at any depth.
    static QList<QAccessibleInterface*> tellsOf(QAccessibleInterface* part)
    {
        QList<QAccessibleInterface*> all;
        for (int index = 0; part && index < part->childCount(); ++index) {
            QAccessibleInterface* const child = part->child(index);
            if (!child || child->state().invisible)
                continue;
            all.append(child);
            all.append(tellsOf(child));
        }
        return all;
    }

    WindowHands hands;
    Scene scene{hands, server, [this] { logIn(); }};
};

INSTANTIATE_TEST_SUITE_P(States, AccessibilityInStatesTest, testing::ValuesIn(allStates()),
                         [](const auto& test) { return test.param.name; });

TEST_P(AccessibilityInStatesTest, namesAllThatCanBeUsed)
{
    const QList<QAccessibleInterface*> told = tellsOf(QAccessible::queryAccessibleInterface(content()));
    for (QWidget* stop : stopsOfTab(content())) {
        QAccessibleInterface* const control = QAccessible::queryAccessibleInterface(stop);
        ASSERT_NE(control, nullptr);
        const std::string name = stop->objectName().toStdString();
        EXPECT_FALSE(control->text(QAccessible::Name).isEmpty()) << name;
        EXPECT_NE(control->role(), QAccessible::NoRole) << name;
        // Qt has no role for what only scrolls.
        EXPECT_TRUE(control->role() != QAccessible::Client || qobject_cast<QScrollArea*>(stop)) << name;
        EXPECT_TRUE(told.contains(control)) << name;
    }
}

TEST_P(AccessibilityInStatesTest, tellsOfListsAsListsOfRows)
{
    int lists = 0;
    for (auto* table : content()->findChildren<tljira::TableView*>()) {
        auto* row = table->cellAtRow(0);
        if (!isInSight(table) || !row)
            continue;
        ++lists;
        EXPECT_EQ(QAccessible::queryAccessibleInterface(table)->role(), QAccessible::List);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(row)->role(), QAccessible::ListItem);
    }
    EXPECT_EQ(lists, hasList(GetParam()) ? 1 : 0);
}

TEST_P(AccessibilityInStatesTest, tellsOfNoControlThatIsNotSeen)
{
    for (QAccessibleInterface* part : tellsOf(QAccessible::queryAccessibleInterface(content()))) {
        const auto* view = qobject_cast<QWidget*>(part->object());
        const bool isControl = view && (view->focusPolicy() & Qt::TabFocus) && view->isEnabled();
        EXPECT_TRUE(!isControl || isInSight(view)) << view->objectName().toStdString();
    }
}

TEST_P(AccessibilityInStatesTest, isADialogAndSoIsItsSheet)
{
    EXPECT_EQ(QAccessible::queryAccessibleInterface(content())->role(), QAccessible::Dialog);
    if (const auto sheet = scene.window()->attachedSheet()) {
        QAccessibleInterface* const inside = QAccessible::queryAccessibleInterface(sheet->widget());
        EXPECT_EQ(inside->role(), QAccessible::Dialog);
        EXPECT_TRUE(inside->state().modal);
    }
}

} // namespace
