#include "tests/desktop/DesktopTest.h"

#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"

#include <QApplication>

namespace tests {

DesktopTest::DesktopTest()
{
    tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    host.setWindowTitle(QStringLiteral("Host"));
    host.setGeometry(20, 760, 400, 200);
    hostField.setObjectName(QStringLiteral("hostField"));
    hostField.setParent(&host);
    hostField.setGeometry(20, 20, 300, 30);
    showHost();
}

void DesktopTest::showHost()
{
    host.show();
    EXPECT_TRUE(waitUntil([this] { return isInFront(&host); })) << "the window manager does not show the host";
}

DesktopTest::~DesktopTest()
{
    hostField.setParent(nullptr);
}

void DesktopTest::expectFreeHost()
{
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    user.type(&hostField, QStringLiteral("free"));
    EXPECT_EQ(hostField.text(), QStringLiteral("free"));
}

void DesktopTest::closeAndExpectFreeHost(const std::shared_ptr<tljira::Window>& window)
{
    // A first request may end the sheet alone.
    const auto sheet = window->attachedSheet();
    clickCloseUntil(*window, [&] { return !window->isVisible() || window->attachedSheet() != sheet; });
    drainMainQueue();
    if (window->isVisible()) {
        EXPECT_EQ(window->attachedSheet(), nullptr);
        clickCloseUntil(*window, [&] { return !window->isVisible(); });
    }
    expectFreeHost();
}

void DesktopTest::clickCloseUntil(const tljira::Window& window, const std::function<bool()>& hasEnded)
{
    // The title bar may be on its way to another place while a window grows or shrinks.
    for (int attempt = 0; attempt < 10 && !hasEnded(); ++attempt) {
        user.clickClose(window.widget());
        waitUntil(hasEnded, std::chrono::seconds(3));
    }
    ASSERT_TRUE(hasEnded());
}

void DesktopTest::picture(const QString& what)
{
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    User::picture(QStringLiteral("desktop-%1-%2").arg(QString::fromLatin1(test->name()).replace(u'/', u'-'), what));
}

} // namespace tests
