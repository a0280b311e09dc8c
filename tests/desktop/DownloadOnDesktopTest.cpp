#include "shell/JMWindowController.h"
#include "tests/desktop/DesktopTest.h"

#include <QFile>
#include <QTimer>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;

constexpr int manyRepeats = 25;

class DownloadOnDesktopTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        logIn();
        server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
        server.addAttachment("ABC-1", {.fileName = "other.tessaloom", .bytes = "another"});
        entry = JMWindowController::init();
    }

    /// The user's part while the host waits for a document.
    std::vector<std::optional<QString>> runAnd(const std::function<void()>& act)
    {
        std::vector<std::optional<QString>> documents;
        // Not 0: events that are posted already would not be handed out while one of them waits for the others.
        QTimer::singleShot(1, [&] {
            waitForPanel();
            act();
            if (entry->window()->isVisible())
                entry->window()->close();
        });
        entry->run([&](const auto& path) { documents.push_back(path); });
        return documents;
    }

    void waitForPanel()
    {
        panel = entry->bodyViewController();
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(panel->issueKeyTextField()); }));
        list = panel->jaListAttachedWindow();
        forgetThePast();
    }

    void lookUp()
    {
        user.write(QStringLiteral("ABC-1"));
        user.press("Return");
        ASSERT_TRUE(waitUntil([this] { return isListUp(); }));
        drainMainQueue();
    }

    QPushButton* rowButton(qint64 row) const
    {
        return qobject_cast<JAAttachedCell*>(list->tableView()->cellAtRow(row))->downloadButton();
    }

    void goToFirstRow()
    {
        for (int stop = 0; stop < 3 && !hasKeyboard(rowButton(0)); ++stop)
            user.press("Tab");
        ASSERT_TRUE(hasKeyboard(rowButton(0)));
    }

    void downloadWithTheKeyboard()
    {
        goToFirstRow();
        user.press("Return");
    }

    bool isListUp() const { return list->wrapperTableView()->isVisible() && list->tableView()->cellAtRow(1); }
    bool isDone() const { return list->downloadPercent()->text() == QStringLiteral("DONE"); }
    std::size_t downloads() const { return server.requests("*/secure/attachment/*").size(); }
    QAbstractButton* closeButton() const
    {
        return list->downloadView()->findChild<QPushButton*>(QStringLiteral("cancelButton"));
    }

    std::shared_ptr<JMWindowController> entry;
    std::shared_ptr<JADownloadBodyViewController> panel;
    std::shared_ptr<JAListAttachedFilesWindow> list;
};

TEST_F(DownloadOnDesktopTest, fetchesADocument)
{
    const auto documents = runAnd([this] {
        picture(QStringLiteral("panel"));
        lookUp();
        picture(QStringLiteral("list"));
        downloadWithTheKeyboard();
        ASSERT_TRUE(waitUntil([this] { return isDone() && hasKeyboard(closeButton()); }));
        picture(QStringLiteral("done"));
        EXPECT_EQ(downloads(), 1U);
        user.press("Return");
        EXPECT_TRUE(waitUntil([this] { return !entry->window()->isVisible(); }));
    });
    EXPECT_EQ(downloads(), 1U);
    ASSERT_EQ(documents.size(), 1U);
    QFile file(documents[0].value_or(QString()));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_THAT(file.readAll().toStdString(), testing::AnyOf("the plan", "another"));
    expectFreeHost();
}

TEST_F(DownloadOnDesktopTest, looksUpOnceWhileReturnIsHeld)
{
    runAnd([this] {
        user.write(QStringLiteral("ABC-1"));
        user.hold("Return", manyRepeats);
        ASSERT_TRUE(waitUntil([this] { return isListUp(); }));
        drainMainQueue();
        EXPECT_EQ(server.requests("*/issue/*").size(), 1U);
        EXPECT_EQ(downloads(), 0U);
        picture(QStringLiteral("held"));
    });
}

TEST_F(DownloadOnDesktopTest, startsOneDownloadWhileReturnIsHeldAndKeepsIt)
{
    server.misbehave(Match::on("*/secure/attachment/*"), Fault().hold(Point::responseBody(3)));
    runAnd([this] {
        lookUp();
        goToFirstRow();
        user.hold("Return", manyRepeats);
        ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
        picture(QStringLiteral("underWay"));
        for (const char* key : {"Return", "space"})
            user.press(key);
        EXPECT_EQ(downloads(), 1U);
        EXPECT_TRUE(list->downloadView()->isVisible());
        server.release();
        ASSERT_TRUE(waitUntil([this] { return isDone(); }));
        EXPECT_EQ(downloads(), 1U);
    });
}

TEST_F(DownloadOnDesktopTest, isCancelledWithEscapeAndLooksUpAgain)
{
    server.misbehave(Match::on("*/secure/attachment/*").once(), Fault().hold(Point::responseBody(3)));
    runAnd([this] {
        lookUp();
        downloadWithTheKeyboard();
        ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
        user.press("Escape");
        ASSERT_TRUE(waitUntil([this] { return entry->window()->attachedSheet() == nullptr; }));
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(panel->issueKeyTextField()); }));
        user.press("Return");
        ASSERT_TRUE(waitUntil([this] { return isListUp(); }));
        user.click(rowButton(1));
        ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    });
    EXPECT_EQ(downloads(), 2U);
}

TEST_F(DownloadOnDesktopTest, saysWhenThereIsNothing)
{
    server.addIssue("ABC-2");
    runAnd([this] {
        user.write(QStringLiteral("ABC-2"));
        user.press("Return");
        ASSERT_TRUE(waitUntil([this] { return list->noDataView()->isVisible(); }));
        picture(QStringLiteral("empty"));
        user.press("Return");
        EXPECT_TRUE(waitUntil([this] { return hasKeyboard(panel->issueKeyTextField()); }));
    });
}

} // namespace
