#include "tests/upload/JiraTest.h"

#include "platform/foundation/URLSessionConfiguration.h"

#include <QDir>
#include <QFile>
#include <QtTest/QTest>

namespace tests {

const QString JiraTest::address = QStringLiteral("http://jira.example.test/");
const QString JiraTest::deadAddress = QStringLiteral("http://dead.example.test/");

JiraTest::JiraTest(const standin::Options& options)
    : server(options)
{
    standin::User jane;
    jane.name = "jane";
    jane.password = "secret";
    jane.displayName = "Jane Doe";
    server.addUser(jane);
    server.addIssue("ABC-1");
    tljira::URLSessionConfiguration::setDefaultRoutes(
        {QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port()),
         QStringLiteral("dead.example.test:80:127.0.0.1:1")});
    client = JAController::sharedInstance();
}

void JiraTest::logIn()
{
    client->setHost(address);
    std::optional<bool> isAccepted;
    client->login(QStringLiteral("jane"), QStringLiteral("secret"),
                  [&isAccepted](const auto& session, const auto&) { isAccepted = session != nullptr; });
    ASSERT_TRUE(waitUntil([&] { return isAccepted.has_value(); }));
    ASSERT_TRUE(*isAccepted);
    forgetThePast();
}

void JiraTest::forgetThePast()
{
    drainMainQueue();
    log.clear();
    server.forgetRequests();
}

void JiraTest::waitForHeldExchange()
{
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
}

LoneDocument::LoneDocument(const QByteArray& bytes)
{
    QDir().mkpath(folder());
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        ADD_FAILURE() << "cannot write " << path().toStdString();
}

void click(QAbstractButton* button)
{
    ASSERT_NE(button, nullptr);
    ASSERT_TRUE(button->isVisible());
    ASSERT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
}

void type(QLineEdit* field, const QString& text)
{
    ASSERT_NE(field, nullptr);
    ASSERT_TRUE(field->isVisible());
    ASSERT_TRUE(field->isEnabled());
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

void press(tljira::Window& window, Qt::Key key)
{
    QWidget* focused = window.widget()->focusWidget();
    QTest::keyClick(focused ? focused : window.widget(), key);
}

bool isShown(const QWidget* view)
{
    return view && view->isVisibleTo(view->window());
}

bool isOnScreen(const QWidget* view)
{
    return view && view->isVisible();
}

} // namespace tests
