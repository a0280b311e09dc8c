// Every state of the windows in which a document is fetched, in every look.

#include "tests/kit/JiraTest.h"
#include "tests/layout/Layout.h"
#include "tests/layout/Look.h"

#include "platform/foundation/values/Error.h"
#include "shell/JAHeadViewController.h"
#include "shell/JMWindowController.h"

#include <QPushButton>

namespace {

using namespace tests;
using namespace std::chrono_literals;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::IsEmpty;

constexpr char certificateName[] =
    "The certificate for this server is invalid. You might be connecting to a server that is pretending to be "
    "“jira.example.test” which could put your confidential information at risk.";

class DownloadLayoutTest : public JiraTest, public testing::WithParamInterface<Look>
{
protected:
    DownloadLayoutTest()
    {
        standin::User user;
        user.name = "anna";
        user.password = "secret";
        user.displayName = GetParam().person;
        server.addUser(user);
        server.addIssue("ABC-2");
        add(GetParam().document, 24 << 20, "2026-03-11T09:06:29.000+0000");
        add(("a name that is far too long for one line or even for two of them, " + std::string(GetParam().document))
                .c_str(),
            1000, "2026-03-05T09:06:29.000+0000");
        add("sampler.tessaloom", 1234567, "2026-03-03T09:06:29.000+0000");
    }

    void add(const char* name, qint64 size, const char* created)
    {
        server.addAttachment("ABC-1", {.fileName = name, .created = created, .syntheticSize = size});
    }

    void look(const char* state, tljira::Window& window)
    {
        const QString name =
            QStringLiteral("%1-%2-%3").arg(QLatin1String(state), QLatin1String(GetParam().name)).arg(points);
        EXPECT_THAT(layoutFlaws(window), IsEmpty()) << name.toStdString();
        keepPicture(window, name);
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
        startDownload(Fault().drip(1 << 20, 100ms));
        ASSERT_TRUE(waitUntil([this] { return list().downloadProgressBar()->value() > 50; }));
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
    const Desktop desktop{GetParam()};
    int points = 0;
};

TEST_P(DownloadLayoutTest, hasRoomForEverythingInThePanelAndTheLists)
{
    for (const int size : GetParam().sizes) {
        desktop.setFontSize(points = size);
        walkThroughLists();
    }
}

TEST_P(DownloadLayoutTest, hasRoomForEverythingInADownload)
{
    for (const int size : GetParam().sizes) {
        desktop.setFontSize(points = size);
        walkThroughDownloads();
    }
}

INSTANTIATE_TEST_SUITE_P(looks, DownloadLayoutTest, testing::ValuesIn(allLooks()),
                         [](const auto& test) { return test.param.name; });

} // namespace
