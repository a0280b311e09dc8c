#include "tests/wayland/WaylandTest.h"

#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/states/Animations.h"
#include "tests/states/InSight.h"

#include <QApplication>
#include <QDir>
#include <QProcess>

namespace tests {

WaylandTest::WaylandTest()
{
    tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    // Who presses a key has thought for as long as they like.
    QApplication::setDoubleClickInterval(0);
    host.setWindowTitle(QStringLiteral("Host"));
    hostField.setObjectName(QStringLiteral("hostField"));
    hostField.setGeometry(20, 20, 300, 30);
    host.resize(400, 200);
    host.show();
    EXPECT_TRUE(waitUntil([this] { return hasKeyboard(&hostField); })) << "the compositor does not show the host";
}

void WaylandTest::expectInFront()
{
    waitForAnimations();
    EXPECT_TRUE(waitUntil([this] { return scene.window()->widget()->isActiveWindow(); }));
    const QWidget* focused = nullptr;
    EXPECT_TRUE(waitUntil([&] { return isInSight(focused = QApplication::focusWidget()); }))
        << (focused ? focused->objectName() : QString()).toStdString();
    EXPECT_TRUE(seen().isFocused);
}

void WaylandTest::expectFreeHost()
{
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(waitUntil([this] { return hasKeyboard(&hostField) && swayWindow(host.windowTitle()).isFocused; }));
    hostField.clear();
    hands.write(QStringLiteral("free"));
    EXPECT_EQ(hostField.text(), QStringLiteral("free"));
}

void WaylandTest::closeAndExpectFreeHost()
{
    // A first request may end the sheet alone.
    const auto sheet = scene.window()->attachedSheet();
    const auto isOver = [this] { return !scene.window()->isVisible(); };
    EXPECT_TRUE(tellSway(seen(), QStringLiteral("kill")));
    ASSERT_TRUE(waitUntil([&] { return isOver() || scene.window()->attachedSheet() != sheet; }));
    if (!isOver()) {
        EXPECT_EQ(scene.window()->attachedSheet(), nullptr);
        EXPECT_TRUE(tellSway(seen(), QStringLiteral("kill")));
        ASSERT_TRUE(waitUntil(isOver));
    }
    expectFreeHost();
}

void WaylandTest::picture(const QString& what)
{
    waitForAnimations();
    QDir().mkpath(QStringLiteral(SCREENSHOTS));
    const QString test = QString::fromLatin1(testing::UnitTest::GetInstance()->current_test_info()->name());
    const QString file = QStringLiteral(SCREENSHOTS "/wayland-%1-%2.png").arg(QString(test).replace(u'/', u'-'), what);
    QFile::remove(file);
    QProcess program;
    program.start(QStringLiteral("grim"), {file});
    EXPECT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_TRUE(QFile::exists(file)) << program.readAllStandardError().toStdString();
}

} // namespace tests
