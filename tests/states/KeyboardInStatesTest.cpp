#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/states/InSight.h"
#include "tests/states/PressWatch.h"
#include "tests/states/Scene.h"
#include "tests/states/WindowHands.h"

#include <QApplication>
#include <QProxyStyle>

#include <algorithm>

namespace {

using namespace tests;

/// Windows have their sizes at once.
class StyleWithoutAnimation : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* view,
                  QStyleHintReturn* data) const override
    {
        return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, view, data);
    }
};

/// What the keyboard does in each state of each window.
class KeyboardInStatesTest : public JiraTest, public testing::WithParamInterface<State>
{
protected:
    KeyboardInStatesTest()
    {
        QApplication::setStyle(new StyleWithoutAnimation);
        // Return that is pressed twice is to count twice.
        QApplication::setDoubleClickInterval(0);
        tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
        host.setObjectName(QStringLiteral("host"));
        hostButton.setObjectName(QStringLiteral("hostButton"));
        hostButton.setDefault(true);
        host.show();
        host.activateWindow();
        EXPECT_TRUE(waitUntil([this] { return host.isActiveWindow(); }));
    }

    void SetUp() override { (scene.*GetParam().reach)(); }

    const QWidget* content() const { return scene.window()->widget(); }
    static QStringList namesOf(const QList<QWidget*>& views)
    {
        QStringList names;
        for (const QWidget* view : views)
            names.append(view ? view->objectName() + u' ' + QString::fromLatin1(view->metaObject()->className())
                              : QStringLiteral("nothing"));
        return names;
    }

    /// Presses the key until the keyboard comes back to where it was; the views that it has been with.
    QList<QWidget*> roundOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        constexpr int mostStops = 40;
        QList<QWidget*> round;
        QWidget* const first = QApplication::focusWidget();
        do {
            round.append(QApplication::focusWidget());
            hands.press(key, modifiers);
        } while (QApplication::focusWidget() != first && round.size() < mostStops);
        return round;
    }

    WindowHands hands;
    QWidget host;
    QPushButton hostButton{QStringLiteral("&Upload"), &host};
    Scene scene{hands, server, [this] { logIn(); }};
};

INSTANTIATE_TEST_SUITE_P(States, KeyboardInStatesTest, testing::ValuesIn(allStates()),
                         [](const auto& test) { return test.param.name; });

TEST_P(KeyboardInStatesTest, isWithSomethingThatIsSeen)
{
    const auto isWithSomethingInSight = [this] {
        QWidget* focused = QApplication::focusWidget();
        return focused && focused->window() == content() && isInSight(focused) &&
               stopsOfTab(content()).contains(focused);
    };
    EXPECT_TRUE(waitUntil(isWithSomethingInSight)) << namesOf({QApplication::focusWidget()}).first().toStdString();
}

TEST_P(KeyboardInStatesTest, goesRoundWhatIsSeenInReadingOrder)
{
    QList<QWidget*> stops = stopsOfTab(content());
    ASSERT_FALSE(stops.isEmpty());
    std::stable_sort(stops.begin(), stops.end(), isReadBefore);

    QList<QWidget*> round = roundOf(Qt::Key_Tab, Qt::NoModifier);
    ASSERT_TRUE(round.contains(stops.first())) << namesOf(stops).first().toStdString();
    std::rotate(round.begin(), std::find(round.begin(), round.end(), stops.first()), round.end());
    EXPECT_EQ(namesOf(round), namesOf(stops));
    EXPECT_TRUE(round == stops);

    QList<QWidget*> back = roundOf(Qt::Key_Backtab, Qt::ShiftModifier);
    std::rotate(back.begin(), std::find(back.begin(), back.end(), stops.first()), back.end());
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(namesOf(back), namesOf(stops));
    EXPECT_TRUE(back == stops);
}

TEST_P(KeyboardInStatesTest, reachesNothingThatIsNotSeen)
{
    const PressWatch watch;
    for (int stop = 0; stop <= stopsOfTab(content()).size(); ++stop) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_A})
            hands.press(key);
        hands.press(Qt::Key_Tab);
    }
    for (int letter = Qt::Key_A; letter <= Qt::Key_Z; ++letter)
        hands.press(static_cast<Qt::Key>(letter), Qt::AltModifier);
    hands.press(Qt::Key_Escape);
    EXPECT_EQ(watch.outOfSight(), QStringList());
}

} // namespace
