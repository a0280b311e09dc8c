// Every state of the windows in which a document is fetched, in every look.

#include "tests/kit/JiraTest.h"
#include "tests/layout/LookTest.h"

#include "platform/foundation/values/Error.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/TransferRate.h"
#include "platform/toolkit/views/View.h"
#include "shell/JAHeadViewController.h"
#include "shell/JMWindowController.h"

#include <QLabel>
#include <QPushButton>

namespace {

using namespace tests;
using namespace std::chrono_literals;
using standin::Fault;
using standin::Match;
using standin::Point;

constexpr qint64 size = 24 << 20;
constexpr qint64 arrived = 13 << 20;

constexpr char certificateName[] =
    "The certificate for this server is invalid. You might be connecting to a server that is pretending to be "
    "“jira.example.test” which could put your confidential information at risk.";

class DownloadLayoutTest : public LookTest<JiraTest>
{
protected:
    DownloadLayoutTest()
    {
        tljira::TransferRate::setUsualClock([this] { return time; });
        server.addIssue("ABC-2");
        add(GetParam().document, size, "2026-03-11T09:06:29.000+0000");
        add(("a name that is far too long for one line or even for two of them, " + std::string(GetParam().document))
                .c_str(),
            1000, "2026-03-05T09:06:29.000+0000");
        add("sampler.tessaloom", 1234567, "2026-03-03T09:06:29.000+0000");
    }

    ~DownloadLayoutTest() override { tljira::TransferRate::setUsualClock({}); }

    void add(const char* name, qint64 bytes, const char* created)
    {
        server.addAttachment("ABC-1", {.fileName = name, .created = created, .syntheticSize = bytes});
    }

    void lookAtSheet(const char* state) { look(state, *list().window()); }

    JADownloadBodyViewController& panel() const { return *entry->bodyViewController(); }
    JAListAttachedFilesWindow& list() const { return *panel().jaListAttachedWindow(); }

    void openPanel()
    {
        logIn();
        entry = JMWindowController::init();
        entry->showWindow();
        const auto* name = entry->headViewController()->displayNameLabel();
        ASSERT_TRUE(waitUntil([&] {
            return ui::isOnScreen(panel().getAttachButton()) && name->text() == QString::fromUtf8(GetParam().person);
        }));
    }

    void lookUp(const QString& key)
    {
        ui::type(panel().issueKeyTextField(), key);
        ui::click(panel().getAttachButton());
        ASSERT_TRUE(waitUntil([this] { return list().window()->isVisible(); }));
        drainMainQueue();
    }

    void closeSheet()
    {
        for (auto* button : list().view()->findChildren<QPushButton*>()) {
            if (ui::isOnScreen(button) && button->property("action") == QStringLiteral("cancalAction"))
                return ui::click(button);
        }
        FAIL() << "no button ends the sheet";
    }

    void startDownload(const Fault& fault)
    {
        server.misbehave(Match::on("*/secure/*").once(), fault);
        ui::click(qobject_cast<JAAttachedCell*>(list().tableView()->cellAtRow(0))->downloadButton());
    }

    void walkThroughLists()
    {
        openPanel();
        look("download-panel", *entry->window());
        server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
        ui::type(panel().issueKeyTextField(), QStringLiteral("ABC-2"));
        ui::click(panel().getAttachButton());
        waitForHeldExchange();
        look("download-looking-up", *entry->window());
        server.release();
        ASSERT_TRUE(waitUntil([this] { return list().window()->isVisible(); }));
        lookAtSheet("empty");
        closeSheet();
        lookUp(QStringLiteral("ABC-1"));
        lookAtSheet("list");
        closeSheet();
        entry->window()->close();
    }

    void walkThroughDownloads()
    {
        openPanel();
        lookUp(QStringLiteral("ABC-1"));
        startDownload(Fault().hold(Point::responseHead(0)));
        waitForHeldExchange();
        lookAtSheet("download-waiting");
        closeSheet();

        lookUp(QStringLiteral("ABC-1"));
        startDownload(Fault().hold(Point::responseBody(arrived)));
        ASSERT_TRUE(waitUntil([this] { return list().downloadProgressBar()->value() > 50; }));
        // With all the words that there are after some seconds.
        time += 3s;
        list().updateDownload(arrived, size, std::nullopt, false);
        lookAtSheet("downloading");
        closeSheet();

        lookUp(QStringLiteral("ABC-1"));
        startDownload(Fault().reset(Point::responseBody(10 << 20)));
        ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(list().downloadError()); }));
        lookAtSheet("download-failed");
        list().updateDownload(0, 1, tljira::makeError(QString(), 1, QString::fromUtf8(certificateName)), false);
        lookAtSheet("download-failed-at-length");
        closeSheet();

        lookUp(QStringLiteral("ABC-1"));
        ui::click(qobject_cast<JAAttachedCell*>(list().tableView()->cellAtRow(0))->downloadButton());
        ASSERT_TRUE(waitUntil([this] { return list().isDone(); }));
        drainMainQueue();
        lookAtSheet("downloaded");
        entry->window()->close();
    }

    std::shared_ptr<JMWindowController> entry;
    /// What the user sees of it.
    std::chrono::milliseconds time{};
};

TEST_P(DownloadLayoutTest, hasRoomForEverythingInThePanelAndTheLists)
{
    walkInAllSizes([this] { walkThroughLists(); });
}

TEST_P(DownloadLayoutTest, hasRoomForEverythingInADownload)
{
    walkInAllSizes([this] { walkThroughDownloads(); });
}

TEST_P(DownloadLayoutTest, saysAtOnceThatItWaitsWhereThereIsRoom)
{
    walkInAllSizes([this] {
        openPanel();
        lookUp(QStringLiteral("ABC-1"));
        startDownload(Fault().hold(Point::responseHead(0)));
        const auto* details = tljira::findView<QLabel>(list().view(), "downloadDetails");
        const QString atOnce = details->text();
        waitForHeldExchange();
        drainMainQueue();
        const QString waiting =
            tljira::InterfaceTexts::shared().text("JAListAttachedFilesWindow", "Waiting for the server…");
        const bool hasRoom = details->fontMetrics().horizontalAdvance(waiting) < details->contentsRect().width();
        EXPECT_EQ(atOnce, hasRoom ? waiting : QString());
        closeSheet();
        entry->window()->close();
    });
}

INSTANTIATE_TEST_SUITE_P(looks, DownloadLayoutTest, testing::ValuesIn(allLooks()),
                         [](const auto& test) { return test.param.name; });

} // namespace
