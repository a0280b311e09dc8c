#include "tests/kit/WaitUntil.h"
#include "tests/screenreader/ReaderHands.h"
#include "tests/screenreader/ReaderTest.h"
#include "tests/states/Animations.h"
#include "tests/states/Scene.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QProgressBar>

#include <algorithm>

namespace {

using namespace tests;

/// What a screen reader meets in each state of each window.
class StatesByReaderTest : public ReaderTest, public testing::WithParamInterface<State>
{
protected:
    void SetUp() override
    {
        (scene.*GetParam().reach)();
        waitForAnimations();
        // What arrives while a window is read shows it half as it was before.
        readWindow();
        ASSERT_TRUE(waitUntil([this] {
            const QStringList before = paths();
            readWindow();
            return !window.path.isEmpty() && paths() == before;
        })) << scene.window()->title().toStdString();
    }

    void readWindow()
    {
        window = Told();
        for (const Told& each : reader.windows()) {
            if (each.name == scene.window()->title())
                window = each;
        }
    }

    QStringList paths() const
    {
        QStringList paths;
        for (const Told& part : window.all())
            paths.append(part.path);
        return paths;
    }

    /// What a part of the program is, which this process can tell from its number.
    static QWidget* view(const Told& part)
    {
        const QString number = part.path.section(u'/', -1);
        auto* const known = QAccessible::accessibleInterface(number.toUInt());
        return known ? qobject_cast<QWidget*>(known->object()) : nullptr;
    }

    static bool isControl(const Told& part)
    {
        constexpr std::array roles{Told::PushButton, Told::CheckBox,     Told::ListItem,    Told::List,
                                   Told::Text,       Told::PasswordText, Told::ProgressBar, Told::Dialog};
        return std::find(roles.begin(), roles.end(), part.role) != roles.end();
    }

    QList<QWidget*> controlsInSight() const
    {
        QList<QWidget*> controls = stopsOfTab(scene.window()->widget());
        for (QWidget* each : scene.window()->widget()->findChildren<QWidget*>()) {
            const auto* label = qobject_cast<QLabel*>(each);
            const bool isText = label && !label->text().isEmpty();
            if ((isText || qobject_cast<QProgressBar*>(each) || qobject_cast<QAbstractButton*>(each)) &&
                isInSight(each))
                controls.append(each);
        }
        return controls;
    }

    void expectDialogs() const
    {
        EXPECT_EQ(window.role, Told::Dialog);
        const auto sheet = scene.window()->attachedSheet();
        if (!sheet)
            return;
        ASSERT_EQ(window.parts.size(), 1);
        EXPECT_EQ(window.parts[0].role, Told::Dialog);
        EXPECT_EQ(window.parts[0].name, sheet->title());
        EXPECT_TRUE(window.parts[0].isModal);
    }

    void expectNames() const
    {
        for (const Told& part : window.all()) {
            EXPECT_TRUE(!isControl(part) || !part.name.isEmpty()) << part.roleName.toStdString() << " " << view(part);
            if (part.role == Told::Text || part.role == Told::PasswordText) {
                EXPECT_FALSE(part.label.isEmpty()) << part.name.toStdString();
            }
        }
    }

    void expectAllThatIsInSight() const
    {
        QList<QWidget*> told;
        for (const Told& part : window.all())
            told.append(view(part));
        for (QWidget* each : controlsInSight())
            EXPECT_TRUE(told.contains(each)) << each->objectName().toStdString();
    }

    void expectNothingHidden() const
    {
        for (const Told& part : window.all()) {
            const QWidget* const each = view(part);
            const bool canBeUsed = part.isUsable && (isControl(part) || part.role == Told::Label);
            EXPECT_TRUE(!canBeUsed || isInSight(each)) << part.roleName.toStdString() << " " << part.name.toStdString();
        }
    }

    void expectRows() const
    {
        int lists = 0;
        for (const Told& part : window.all()) {
            if (part.role != Told::List)
                continue;
            ++lists;
            const QList<Told> all = part.all();
            const auto rows =
                std::count_if(all.begin(), all.end(), [](const Told& row) { return row.role == Told::ListItem; });
            EXPECT_EQ(rows, static_cast<qsizetype>(server.attachments("ABC-1").size()));
        }
        EXPECT_EQ(lists, hasList(GetParam()) ? 1 : 0);
    }

    ReaderHands hands{user};
    Scene scene{hands, server, [this] { logIn(); }};
    Told window;
};

INSTANTIATE_TEST_SUITE_P(States, StatesByReaderTest, testing::ValuesIn(allStates()),
                         [](const auto& test) { return test.param.name; });

TEST_P(StatesByReaderTest, hearsOfAllThatIsInSightAndOfNothingElse)
{
    expectDialogs();
    expectNames();
    expectAllThatIsInSight();
    expectNothingHidden();
    expectRows();
}

} // namespace
