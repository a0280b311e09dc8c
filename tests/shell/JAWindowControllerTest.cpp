#include "shell/JAWindowController.h"

#include "client/JAController.h"
#include "platform/foundation/values/VariantDescription.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Application.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QTimer>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class JAWindowControllerTest : public testing::Test
{
protected:
    /// The lines that the controller itself writes when its window is loaded.
    QStringList linesOfLoading(const std::shared_ptr<JAWindowController>& controller)
    {
        log.clear();
        controller->window();
        QStringList lines = log.lines();
        const auto firstOfPanel = lines.indexOf(QStringLiteral("JAListAttachedFilesWindow windowWillLoad"));
        return lines.mid(0, firstOfPanel);
    }

    const std::shared_ptr<JAController>& client = JAController::sharedInstance();
    tests::LogCapture log;
};

TEST_F(JAWindowControllerTest, initClearsTheClientsFile)
{
    client->setPathFile(QStringLiteral("/before"));
    const auto controller = JAWindowController::init();
    EXPECT_EQ(client->pathFile(), QString());
    EXPECT_EQ(controller->pathFile(), std::nullopt);
    EXPECT_EQ(client->delegate(), nullptr);
    EXPECT_FALSE(controller->isWindowLoaded());
}

TEST_F(JAWindowControllerTest, initWithPathMakesItTheClientsFile)
{
    const auto controller = JAWindowController::initWithPath(QStringLiteral("/documents/plan"));
    EXPECT_EQ(controller->pathFile(), QStringLiteral("/documents/plan"));
    EXPECT_EQ(client->pathFile(), QStringLiteral("/documents/plan"));
    EXPECT_EQ(client->delegate(), nullptr);
    controller->window();
    EXPECT_EQ(controller->bodyViewController()->pathLabel()->text(), QStringLiteral("/documents/plan"));
}

TEST_F(JAWindowControllerTest, loadsItsPanelsFromTheHostsBundle)
{
    const auto controller = JAWindowController::init();
    EXPECT_EQ(controller->bodyViewController(), nullptr);
    EXPECT_EQ(controller->headViewController(), nullptr);
    controller->window();
    EXPECT_THAT(controller->interfaceProblems(), IsEmpty());
    EXPECT_THAT(controller->bodyViewController()->interfaceProblems(), IsEmpty());
    EXPECT_THAT(controller->headViewController()->interfaceProblems(), IsEmpty());
}

TEST_F(JAWindowControllerTest, itsPanelsFillTheirPlaces)
{
    const auto controller = JAWindowController::init();
    controller->showWindow();
    ASSERT_TRUE(tests::waitUntil([&] { return controller->window()->isVisible(); }));
    tests::drainMainQueue();
    QWidget* body = controller->bodyViewController()->view();
    QWidget* head = controller->headViewController()->view();
    EXPECT_EQ(body->parentWidget(), controller->bodyView());
    EXPECT_EQ(head->parentWidget(), controller->headView());
    EXPECT_EQ(body->geometry(), controller->bodyView()->rect());
    EXPECT_EQ(head->geometry(), controller->headView()->rect());
    EXPECT_TRUE(body->isVisible());
    EXPECT_TRUE(head->isVisible());
}

TEST_F(JAWindowControllerTest, hasRoomForLargeLettersFromTheBeginning)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSize(40);
    QApplication::setFont(large);
    const auto controller = JAWindowController::init();
    QWidget* content = controller->window()->contentView();
    EXPECT_GT(content->height(), 380);
    EXPECT_EQ(content->size(), tljira::neededSize(content));
    EXPECT_EQ(controller->window()->widget()->size(), content->size());
    QApplication::setFont(usual);
}

TEST_F(JAWindowControllerTest, itsPanelsCarryTheNumberOfTheirSubviews)
{
    const auto controller = JAWindowController::init();
    controller->window();
    const auto count = [](tljira::ViewController& panel) { return tljira::subviews(panel.view()).size(); };
    EXPECT_GT(count(*controller->bodyViewController()), 0);
    EXPECT_EQ(controller->bodyViewController()->representedObject().toLongLong(),
              count(*controller->bodyViewController()));
    EXPECT_EQ(controller->headViewController()->representedObject().toLongLong(),
              count(*controller->headViewController()));
}

TEST_F(JAWindowControllerTest, logsThePagesOfTheHostsObject)
{
    QObject document;
    const QVariantList pages = {QStringLiteral("first"), 2, QVariantMap{{QStringLiteral("width"), 210}}};
    document.setProperty("pages", pages);
    const auto controller = JAWindowController::init();
    controller->setTmpFile(&document);
    EXPECT_THAT(linesOfLoading(controller),
                ElementsAre(QStringLiteral("self.tmpFile: QObject"), QStringLiteral("first"), QStringLiteral("2"),
                            QStringLiteral("{\n    width = 210;\n}")));
}

TEST_F(JAWindowControllerTest, logsPagesThatAreTexts)
{
    QObject document;
    document.setProperty("pages", QStringList{QStringLiteral("a"), QStringLiteral("b")});
    const auto controller = JAWindowController::init();
    controller->setTmpFile(&document);
    EXPECT_THAT(linesOfLoading(controller).mid(1), ElementsAre(QStringLiteral("a"), QStringLiteral("b")));
}

TEST_F(JAWindowControllerTest, logsPagesThatAreObjectsAndRectangles)
{
    QObject document;
    QObject page;
    document.setProperty("pages", QVariant::fromValue(QList<QObject*>{&page}));
    const auto withObjects = JAWindowController::init();
    withObjects->setTmpFile(&document);
    EXPECT_THAT(linesOfLoading(withObjects).mid(1), ElementsAre(tljira::describe(QVariant::fromValue(&page))));

    document.setProperty("pages", QVariant::fromValue(QList<QRectF>{QRectF(0, 0, 210, 297.5)}));
    const auto withRectangles = JAWindowController::init();
    withRectangles->setTmpFile(&document);
    EXPECT_THAT(linesOfLoading(withRectangles).mid(1), ElementsAre(QStringLiteral("{{0, 0}, {210, 297.5}}")));
}

TEST_F(JAWindowControllerTest, logsNoPagesWhereThereAreNone)
{
    QObject document;
    const auto withoutPages = JAWindowController::init();
    withoutPages->setTmpFile(&document);
    EXPECT_EQ(linesOfLoading(withoutPages).size(), 1);
    EXPECT_THAT(linesOfLoading(JAWindowController::init()), ElementsAre(QStringLiteral("self.tmpFile: (null)")));
}

TEST_F(JAWindowControllerTest, doesNotKeepTheHostsObject)
{
    const auto controller = JAWindowController::init();
    {
        QObject document;
        controller->setTmpFile(&document);
        EXPECT_EQ(controller->tmpFile(), &document);
    }
    EXPECT_EQ(controller->tmpFile(), nullptr);
    EXPECT_THAT(linesOfLoading(controller), ElementsAre(QStringLiteral("self.tmpFile: (null)")));
}

TEST_F(JAWindowControllerTest, runDoesNothing)
{
    const auto controller = JAWindowController::init();
    bool isCalled = false;
    controller->run([&isCalled](const auto&) { isCalled = true; });
    tests::drainMainQueue();
    EXPECT_FALSE(isCalled);
    EXPECT_FALSE(controller->isWindowLoaded());
    EXPECT_EQ(tljira::Application::modalWindow(), nullptr);
}

TEST_F(JAWindowControllerTest, closingItsWindowEndsTheHostsModalRun)
{
    const auto controller = JAWindowController::init();
    controller->window();
    QTimer::singleShot(0, [&] {
        log.clear();
        controller->window()->widget()->close();
    });
    EXPECT_EQ(tljira::Application::runModalForWindow(controller->window()), tljira::ModalResponse::Stop);
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("JAWindowController windowWillClose")));
    EXPECT_FALSE(controller->window()->isVisible());
}

/// A run ends by itself when its own window closes; here it is that of another window.
TEST_F(JAWindowControllerTest, closingItsWindowEndsTheModalRunOfTheWindowWhoseSheetItIs)
{
    const auto controller = JAWindowController::init();
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    QTimer::singleShot(0, [&] {
        host->beginSheet(controller->window(), nullptr);
        controller->window()->close();
        tljira::Application::stopModal(99); // does nothing when the run is stopped already
    });
    EXPECT_EQ(tljira::Application::runModalForWindow(host), tljira::ModalResponse::Stop);
    EXPECT_TRUE(host->isVisible());
}

} // namespace
