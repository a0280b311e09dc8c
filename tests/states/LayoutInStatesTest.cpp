#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/kit/WaitUntil.h"
#include "tests/layout/Layout.h"
#include "tests/states/Animations.h"
#include "tests/states/Scene.h"
#include "tests/states/WindowHands.h"

#include <QApplication>

namespace {

using namespace tests;

/// What becomes of each state of each window while it is open.
class LayoutInStatesTest : public JiraTest, public testing::WithParamInterface<State>
{
protected:
    LayoutInStatesTest()
    {
        QApplication::setDoubleClickInterval(0);
        tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    }
    ~LayoutInStatesTest() override { QApplication::setFont(usual); }

    void expectRoomForEverything()
    {
        waitForAnimations();
        const auto sheet = scene.window()->attachedSheet();
        tljira::Window& front = sheet ? *sheet : *scene.window();
        // What the server still sends takes its place in the next turn.
        waitUntil([&] { return layoutFlaws(front).isEmpty(); });
        EXPECT_THAT(layoutFlaws(front), testing::IsEmpty());
        keepPicture(*scene.window(), QStringLiteral("inStates-%1").arg(QLatin1String(GetParam().name)));
    }

    const QFont usual = QApplication::font();
    WindowHands hands;
    Scene scene{hands, server, [this] { logIn(); }};
};

INSTANTIATE_TEST_SUITE_P(States, LayoutInStatesTest, testing::ValuesIn(allStates()),
                         [](const auto& test) { return test.param.name; });

TEST_P(LayoutInStatesTest, growsWithTheFont)
{
    (scene.*GetParam().reach)();
    QFont large = usual;
    large.setPointSize(18);
    QApplication::setFont(large);
    drainMainQueue();
    expectRoomForEverything();
}

} // namespace
