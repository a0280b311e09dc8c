#include "shell/JMWindowController.h"

#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "platform/toolkit/windows/Application.h"
#include "shell/JAHeadViewController.h"
#include "tests/download/DownloadTest.h"

#include <QApplication>
#include <QTimer>
#include <QtTest/QTest>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class JMWindowControllerTest : public tests::DownloadTest
{
protected:
    void make()
    {
        log.clear();
        controller = JMWindowController::init();
    }

    JADownloadBodyViewController& body() const { return *controller->bodyViewController(); }
    JAListAttachedFilesWindow& list() const { return *body().jaListAttachedWindow(); }

    /// Does this in the modal run, once the session is known to be good.
    void duringRun(const std::function<void()>& steps)
    {
        // Not 0: events that are posted already would not be handed out while one of them waits for the others.
        QTimer::singleShot(1, [this, steps] {
            ASSERT_TRUE(tests::waitUntil([this] { return body().getAttachButton()->isVisible(); }));
            steps();
        });
        controller->run([this](const std::optional<QString>& path) { paths.push_back(path); });
    }

    void lookUp()
    {
        QTest::keyClicks(body().issueKeyTextField(), QStringLiteral("ABC-1"));
        tests::ui::click(body().getAttachButton());
        ASSERT_TRUE(tests::waitUntil([this] { return list().window()->isVisible(); }));
        tests::drainMainQueue();
    }

    std::shared_ptr<JMWindowController> controller;
    std::vector<std::optional<QString>> paths;
};

TEST_F(JMWindowControllerTest, isNamedForItsJob)
{
    make();

    EXPECT_EQ(controller->window()->title(), QStringLiteral("Open from Jira"));
}

TEST_F(JMWindowControllerTest, isMadeOfTheLoginFormTheHeaderAndTheDownloadPanel)
{
    make();
    EXPECT_NE(controller->jaLoginWindow(), nullptr);
    EXPECT_NE(controller->headViewController(), nullptr);
    ASSERT_NE(controller->bodyViewController(), nullptr);
    EXPECT_EQ(controller->bodyViewController()->nibName(), QStringLiteral("JADownloadBodyViewController"));
    EXPECT_EQ(controller->nibName(), QStringLiteral("JMWindowController"));
    EXPECT_FALSE(controller->isWindowLoaded());
    EXPECT_EQ(client->delegate().get(), controller.get());
    EXPECT_EQ(client->pathFile(), QString());
    EXPECT_THAT(log.lines(), testing::Contains(testing::ResultOf(
                                 [](const QString& line) {
                                     return line.startsWith(QStringLiteral("?? <JADownloadBodyViewController: 0x"));
                                 },
                                 true)));
}

TEST_F(JMWindowControllerTest, neverTouchesTheMarkOfTheFirstRun)
{
    make();
    controller->window();
    tests::drainMainQueue();
    EXPECT_EQ(tljira::UserDefaults::standardUserDefaults().objectForKey(kClearCache), std::nullopt);
    for (const auto& request : server.requests())
        EXPECT_NE(request.method, "DELETE");
    EXPECT_NE(client->jiraHost(), std::nullopt);
}

TEST_F(JMWindowControllerTest, checksTheSessionAndShowsHeaderAndPanel)
{
    make();
    controller->showWindow();
    EXPECT_THAT(controller->interfaceProblems(), IsEmpty());
    ASSERT_TRUE(tests::waitUntil([this] { return body().getAttachButton()->isVisible(); }));
    EXPECT_TRUE(controller->downloadViewContainer()->isVisible());
    EXPECT_FALSE(controller->loginViewContainer()->isVisible());
    EXPECT_EQ(server.requests("/rest/auth/1/session").size(), 1U);
    ASSERT_TRUE(tests::waitUntil(
        [this] { return controller->headViewController()->nameLabel()->text() == QStringLiteral("anna"); }));
}

TEST_F(JMWindowControllerTest, showsTheLoginFormWithoutASession)
{
    server.expireSessions();
    make();
    controller->showWindow();
    ASSERT_TRUE(tests::waitUntil([this] { return controller->loginViewContainer()->isVisible(); }));
    EXPECT_FALSE(body().getAttachButton()->isVisible());
}

TEST_F(JMWindowControllerTest, handsOverNothingWhenItsWindowIsClosed)
{
    make();
    duringRun([this] {
        EXPECT_THAT(paths, IsEmpty());
        log.clear();
        controller->window()->widget()->close();
        EXPECT_THAT(paths, IsEmpty());
    });
    EXPECT_THAT(paths, ElementsAre(std::nullopt));
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("JAWindowController windowWillClose")));
}

TEST_F(JMWindowControllerTest, handsOverThePathOfTheDownload)
{
    attach({.fileName = "plan.tessaloom", .bytes = "the plan"});
    make();
    duringRun([this] {
        lookUp();
        tests::ui::click(tests::cellAtRow(list(), 0)->downloadButton());
        ASSERT_TRUE(tests::waitUntil([this] { return list().isDone(); }));
        tests::drainMainQueue();
        EXPECT_THAT(paths, IsEmpty());
        tests::ui::click(tests::closeButton(*list().window()));
    });
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_EQ(tests::contentsOf(paths[0].value_or(QString())), QByteArray("the plan"));
    EXPECT_FALSE(controller->window()->isVisible());
    EXPECT_EQ(tljira::Application::modalWindow(), nullptr);
}

TEST_F(JMWindowControllerTest, handsOverThePathThatTheBodyHoldsWhenTheRunEnds)
{
    make();
    body().setPath(QStringLiteral("/earlier"));
    duringRun([this] {
        body().setPath(QStringLiteral("/later"));
        tljira::Application::stopModal();
    });
    EXPECT_THAT(paths, ElementsAre(QStringLiteral("/later")));
}

TEST_F(JMWindowControllerTest, runsAgain)
{
    make();
    for (int run = 0; run < 2; ++run)
        duringRun([this] { controller->window()->widget()->close(); });
    EXPECT_THAT(paths, ElementsAre(std::nullopt, std::nullopt));
}

TEST_F(JMWindowControllerTest, runsWithoutACallBack)
{
    make();
    QTimer::singleShot(0, [] { tljira::Application::stopModal(); });
    controller->run({});
    EXPECT_EQ(tljira::Application::modalWindow(), nullptr);
}

TEST_F(JMWindowControllerTest, outlivesAHostThatLetsGoDuringTheRun)
{
    make();
    JMWindowController& running = *controller;
    QTimer::singleShot(0, [this] {
        client->setDelegate(nullptr);
        controller.reset();
        tests::drainMainQueue();
        tljira::Application::stopModal();
    });
    running.run([this](const auto& path) { paths.push_back(path); });
    EXPECT_THAT(paths, ElementsAre(std::nullopt));
}

TEST_F(JMWindowControllerTest, takesOverFromAnEarlierController)
{
    make();
    const auto earlier = controller;
    make();
    EXPECT_EQ(client->delegate().get(), controller.get());
    EXPECT_NE(controller, earlier);
}

} // namespace
