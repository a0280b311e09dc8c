#include "download/DownloadFolder.h"
#include "download/JAListAttachedFilesWindow.h"

#include "client/TransferListener.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "platform/toolkit/views/PaletteColors.h"
#include "platform/toolkit/views/TransferRate.h"
#include "platform/toolkit/views/View.h"
#include "tests/download/DownloadTest.h"
#include "tests/kit/GermanUser.h"
#include "tests/kit/WithoutPrivileges.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTimer>
#include <QtTest/QTest>

#include <algorithm>
#include <set>
#include <utility>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::contentsOf;
using tests::writeFile;

/// The intervals of the timers that fire again and again, once they have.
struct RepeatedTimers : QObject
{
    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* timer = qobject_cast<QTimer*>(object);
        if (timer && event->type() == QEvent::Timer && !timer->isSingleShot())
            fired.insert(timer->intervalAsDuration());
        return false;
    }

    std::set<std::chrono::milliseconds> fired;
};

class JAListAttachedFilesWindowDownloadTest : public tests::DownloadTest
{
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        parent->beginSheet(list->window(), [this](int code) { returnCodes.push_back(code); });
        tests::drainMainQueue();
    }

    void show(const std::shared_ptr<const JAAttachmentObject>& attachment)
    {
        list->setAttachments({attachment});
        list->reload();
        tests::drainMainQueue();
        log.clear();
    }

    void showFile(const std::string& name, const std::string& bytes)
    {
        show(attach({.fileName = name, .bytes = bytes}));
    }

    void showSyntheticFile(qint64 size) { show(attach({.fileName = "plan.tessaloom", .syntheticSize = size})); }

    void press(qint64 row = 0) { tests::ui::click(tests::cellAtRow(*list, row)->downloadButton()); }

    void pressClose() { tests::ui::click(tests::closeButton(*list->window())); }

    QString percent() const { return list->downloadPercent()->text(); }
    QString error() const { return list->downloadError()->text(); }
    int bar() const { return list->downloadProgressBar()->value(); }
    QString target() const { return list->path().value_or(QString()); }
    QLabel* label(const char* name) const { return tljira::findView<QLabel>(list->view(), name); }
    QString title() const { return tljira::text(QPointer(label("downloadTitle"))); }
    QString details() const { return tljira::text(QPointer(label("downloadDetails"))); }
    QString closeButtonText() const { return tests::closeButton(*list->window())->text(); }
    QColor barColor() const { return list->downloadProgressBar()->palette().color(QPalette::Highlight); }

    /// The download has ended, and the file is where it is going to be.
    void waitForEnd()
    {
        ASSERT_TRUE(tests::waitUntil([this] { return percent() == QStringLiteral("DONE") || !error().isEmpty(); }));
        tests::drainMainQueue();
    }

    void downloadAndWait()
    {
        // What the window says of an earlier download would count as the end of this one.
        list->setError(QString());
        press();
        waitForEnd();
    }

    /// Starts a download that stops in its middle, of which the window has heard.
    void downloadHalf()
    {
        showSyntheticFile(1'000'000);
        downloadAndHold(Point::responseBody(500'000));
        ASSERT_TRUE(tests::waitUntil([this] { return bar() == 50; }));
    }

    /// The answer to another request breaks off.
    void letAnotherRequestFail()
    {
        server.misbehave(Match::on("*/myself").once(), Fault().close(Point::responseBody(3)));
        client->getCurrentUser({});
        ASSERT_TRUE(tests::waitUntil([this] { return !error().isEmpty(); }));
    }

    /// Starts a download that stops after so many bytes of the answer's body.
    void downloadAndHold(Point point)
    {
        server.misbehave(Match::on("*/secure/*").once(), Fault().hold(point));
        press();
        waitForHeldExchange();
    }

    void expectFailure(const QString& text)
    {
        EXPECT_EQ(error(), text);
        EXPECT_EQ(percent(), QString());
        EXPECT_EQ(bar(), 100);
        EXPECT_FALSE(list->isDone());
        EXPECT_TRUE(list->downloadView()->isVisible());
        EXPECT_FALSE(tljira::FileManager::fileExistsAtPath(target()));
    }

    std::vector<int> returnCodes;
    const std::shared_ptr<tljira::Window> parent = tests::shownWindow();
    const std::shared_ptr<JAListAttachedFilesWindow> list = JAListAttachedFilesWindow::init();
    const QString folder = DownloadFolder::path();
};

TEST_F(JAListAttachedFilesWindowDownloadTest, putsTheFileIntoTheDownloadFolder)
{
    showFile("plan.tessaloompacket", "the plan");
    downloadAndWait();
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(bar(), 100);
    EXPECT_EQ(error(), QString());
    EXPECT_TRUE(list->isDone());
    EXPECT_EQ(list->path(), folder + QStringLiteral("/plan.tessaloom"));
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, doublesTheExtensionOfADocument)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    EXPECT_EQ(list->path(), folder + QStringLiteral("/plan.tessaloom.tessaloom"));
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, logsWhatItDoesInOrder)
{
    showFile("plan.tessaloom", "the plan");
    press();
    const QStringList lines = log.lines();
    ASSERT_GE(lines.size(), 5);
    EXPECT_THAT(
        lines.mid(0, 5),
        ElementsAre(QStringLiteral("Download Action 0"), QStringLiteral("tmp directory: ") + folder,
                    QStringLiteral("removeItemAtPath error : “com.tessalooom.JAController” couldn’t be removed."),
                    QStringLiteral("createDirectoryAtPath error : (null)"), target()));
    waitForEnd();
    EXPECT_THAT(log.lines(), testing::IsSupersetOf({QStringLiteral("percent:100.000000 total:8 bytes: 8 0"),
                                                    QStringLiteral("percent:1250.000000 total:8 bytes: 100 1"),
                                                    QStringLiteral("New location: ") + target()}));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, knowsThePathBeforeTheFirstByte)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseHead(0));
    EXPECT_EQ(list->path(), folder + QStringLiteral("/plan.tessaloom.tessaloom"));
    EXPECT_FALSE(list->isDone());
    EXPECT_FALSE(tljira::FileManager::fileExistsAtPath(target()));
}

/// Counts how often a view is painted.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget* view) { view->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

TEST_F(JAListAttachedFilesWindowDownloadTest, isDrawnAtOnceAndItsEdgesFollowWhenItsStateChanges)
{
    showFile("plan.tessaloom", "the plan");
    QWidget* const outer = list->window()->widget();
    ASSERT_TRUE(tests::waitUntil([&] { return outer->height() == list->view()->height(); }));
    // While a sheet slides in, a picture of it lies on it.
    ASSERT_TRUE(tests::waitUntil([&] { return !outer->window()->findChild<QWidget*>(QStringLiteral("sheetSlide")); }));
    PaintCount paints(list->view());
    for (QWidget* state : {list->downloadView(), list->wrapperTableView(), list->noDataView()}) {
        const int heightBefore = outer->height();
        paints.count = 0;
        list->setActualView(state);
        EXPECT_EQ(list->window()->frame().height(), state == list->wrapperTableView() ? 350 : 200);
        EXPECT_EQ(outer->height(), heightBefore);
        EXPECT_GT(paints.count, 0);
        EXPECT_TRUE(tests::waitUntil([&] { return outer->height() == list->view()->height(); }));
        EXPECT_NE(outer->height(), heightBefore);
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsTheDownloadingState)
{
    showFile("plan.tessaloom", "the plan");
    const QRectF before = list->window()->frame();
    downloadAndHold(Point::responseHead(0));
    EXPECT_TRUE(list->downloadView()->isVisible());
    EXPECT_FALSE(list->wrapperTableView()->isVisible());
    EXPECT_FALSE(list->noDataView()->isVisible());
    EXPECT_EQ(list->window()->frame(), QRectF(before.x(), before.bottom() - 200, before.width(), 200));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, saysInThePressWhatItDoes)
{
    showFile("plan.tessaloom", "the plan");
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseHead(0)));
    press();
    EXPECT_EQ(title(), QStringLiteral("Downloading"));
    EXPECT_EQ(tljira::text(QPointer(label("downloadName"))), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(details(), QStringLiteral("Waiting for the server…"));
    EXPECT_EQ(closeButtonText(), QStringLiteral("Cancel"));
    EXPECT_EQ(bar(), 0);
}

class GermanDownloadTest : tests::GermanUser, public JAListAttachedFilesWindowDownloadTest
{
};

TEST_F(GermanDownloadTest, isToldInTheUsersLanguage)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseHead(0));
    EXPECT_EQ(title(), QStringLiteral("Download läuft"));
    EXPECT_EQ(details(), QStringLiteral("Warten auf den Server\u00a0…"));
    EXPECT_EQ(closeButtonText(), QStringLiteral("Abbrechen"));
    server.release();
    waitForEnd();
    EXPECT_EQ(title(), QStringLiteral("Heruntergeladen"));
    EXPECT_EQ(closeButtonText(), QStringLiteral("Schließen"));
}

TEST_F(GermanDownloadTest, thatFailsIsToldInTheUsersLanguage)
{
    showFile("plan.tessaloom", "the plan");
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    downloadAndWait();
    EXPECT_EQ(title(), QStringLiteral("Nicht heruntergeladen"));
    EXPECT_EQ(closeButtonText(), QStringLiteral("Schließen"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsNothingOfAnEarlierDownloadWhileItWaits)
{
    showFile("plan.tessaloom", "the plan");
    for (const bool fails : {true, false}) {
        if (fails)
            server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
        downloadAndWait();
        list->reload();
        tests::drainMainQueue();
        downloadAndHold(Point::responseHead(0));
        EXPECT_EQ(percent(), QString());
        EXPECT_EQ(details(), QStringLiteral("Waiting for the server…"));
        EXPECT_EQ(error(), QString());
        EXPECT_EQ(bar(), 0);
        EXPECT_FALSE(label("downloadDoneSize")->isVisible());
        EXPECT_FALSE(list->downloadError()->isVisible());
        EXPECT_TRUE(list->downloadPercent()->isVisible());
        EXPECT_EQ(barColor(), list->view()->palette().color(QPalette::Highlight));
        server.release();
        waitForEnd();
        list->reload();
        tests::drainMainQueue();
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsHowMuchHasComeHowFastAndHowLongItTakes)
{
    showSyntheticFile(40 << 20);
    server.misbehave(Match::on("*/secure/*"), Fault().drip(1 << 18, 100ms));
    press();
    const QRegularExpression all(
        QStringLiteral("^\\d+\\.\\d of 40\\.00 MB · \\d+(\\.\\d)? [KM]B/s · (about )?\\d+ s left$"));
    ASSERT_TRUE(tests::waitUntil([&] { return all.match(details()).hasMatch() || list->isDone(); }));
    EXPECT_FALSE(list->isDone()) << details().toStdString();
    EXPECT_TRUE(percent().endsWith(u'%'));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, tellsThatNothingComesAnyMore)
{
    showSyntheticFile(40 << 20);
    server.misbehave(Match::on("*/secure/*"), Fault().hold(Point::responseBody(20 << 20)));
    press();
    const auto arrived = QStringLiteral("20.0 of 40.00 MB · ");
    ASSERT_TRUE(tests::waitUntil([&] {
        return details().startsWith(arrived) && details().contains(QStringLiteral("B/s"));
    })) << details().toStdString();
    const QString before = details();
    EXPECT_TRUE(tests::waitUntil([&] { return details() != before; }));
    EXPECT_TRUE(details().startsWith(arrived)) << details().toStdString();
}

TEST_F(JAListAttachedFilesWindowDownloadTest, measuresEachDownloadAnew)
{
    std::chrono::milliseconds now(0);
    tljira::TransferRate::setUsualClock([&now] { return now; });
    showSyntheticFile(40 << 20);
    const QString arrived = QStringLiteral("20.0 of 40.00 MB");
    server.misbehave(Match::on("*/secure/*"), Fault().hold(Point::responseBody(20 << 20)));
    press();
    ASSERT_TRUE(tests::waitUntil([&] { return details().startsWith(arrived); }));
    now += 10s;
    EXPECT_TRUE(tests::waitUntil([&] { return details().contains(QStringLiteral("B/s")); }));
    server.release();
    waitForEnd();
    list->reload();
    tests::drainMainQueue();

    press();
    EXPECT_TRUE(tests::waitUntil([&] { return details() == arrived; })) << details().toStdString();
    server.release();
    waitForEnd();
    tljira::TransferRate::setUsualClock({});
}

TEST_F(JAListAttachedFilesWindowDownloadTest, tellsTheRateWithTheBytesThatItIsOf)
{
    std::chrono::milliseconds now(0);
    tljira::TransferRate::setUsualClock([&now] { return now; });
    showSyntheticFile(40 << 20);
    downloadAndHold(Point::responseHead(0));
    now += 10s;
    list->updateDownload(20 << 20, 40 << 20, std::nullopt, false);
    EXPECT_TRUE(details().startsWith(QStringLiteral("20.0 of 40.00 MB · 2.0 MB/s"))) << details().toStdString();
    tljira::TransferRate::setUsualClock({});
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theFirstByteEndsTheWaiting)
{
    showSyntheticFile(40 << 20);
    downloadAndHold(Point::responseHead(0));
    list->updateDownload(1, 40 << 20, std::nullopt, false);
    EXPECT_TRUE(details().startsWith(QStringLiteral("0.0 of 40.00 MB"))) << details().toStdString();
}

TEST_F(JAListAttachedFilesWindowDownloadTest, makesRoomForPercentsThatBecomeWider)
{
    showSyntheticFile(40 << 20);
    downloadAndHold(Point::responseHead(0));
    const QLabel* shown = label("downloadDetails");
    QFont font = list->view()->font();
    for (int points = 10; points <= 30; ++points) {
        font.setPointSize(points);
        list->view()->setFont(font);
        list->updateDownload(1, 40 << 20, std::nullopt, false);
        tests::drainMainQueue();
        list->updateDownload(qint64(1) << 40, 0, std::nullopt, false);
        tests::drainMainQueue();
        EXPECT_LE(shown->fontMetrics().horizontalAdvance(details()), shown->width()) << points;
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, leavesOutOfTheNumbersWhatHasNoRoom)
{
    showSyntheticFile(40 << 20);
    QFont font = list->view()->font();
    font.setPointSize(20);
    list->view()->setFont(font);
    server.misbehave(Match::on("*/secure/*"), Fault().hold(Point::responseBody(20 << 20)));
    press();
    ASSERT_TRUE(tests::waitUntil([this] { return details().startsWith(QStringLiteral("20.0 of 40.00 MB")); }));
    const QLabel* shown = label("downloadDetails");
    EXPECT_LE(shown->fontMetrics().horizontalAdvance(details()), shown->width());
    EXPECT_FALSE(details().contains(QStringLiteral("B/s")));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theEndIsShownWithATickAndTheSize)
{
    show(attach({.fileName = "plan.tessaloom", .syntheticSize = 3 << 19}));
    downloadAndWait();
    EXPECT_EQ(title(), QStringLiteral("Downloaded"));
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_TRUE(label("downloadDoneSize")->isVisible());
    EXPECT_EQ(tljira::text(QPointer(label("downloadDoneSize"))), QStringLiteral("1.50 MB"));
    EXPECT_EQ(details(), QString());
    EXPECT_EQ(closeButtonText(), QStringLiteral("Close"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theButtonReadsOpenWhereSomebodyOpensTheDocument)
{
    list->setIssueKey(QStringLiteral("ABC-1"));
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseBody(3));
    EXPECT_EQ(closeButtonText(), QStringLiteral("Cancel"));
    server.release();
    waitForEnd();
    EXPECT_EQ(closeButtonText(), QStringLiteral("Open"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aFailureIsShownInTheColourOfErrors)
{
    list->setIssueKey(QStringLiteral("ABC-1"));
    showFile("plan.tessaloom", "the plan");
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    downloadAndWait();
    EXPECT_EQ(title(), QStringLiteral("Not downloaded"));
    EXPECT_TRUE(list->downloadError()->isVisible());
    EXPECT_EQ(barColor(), tljira::errorColor(list->view()->palette()));
    EXPECT_FALSE(list->downloadPercent()->isVisible());
    EXPECT_FALSE(label("downloadDetails")->isVisible());
    EXPECT_EQ(closeButtonText(), QStringLiteral("Close"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aMessageTakesRoomOnlyWhenThereIsOne)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseBody(3));
    EXPECT_FALSE(list->downloadError()->isVisible());
    server.release();
    waitForEnd();
    EXPECT_FALSE(list->downloadError()->isVisible());
}

TEST_F(JAListAttachedFilesWindowDownloadTest, everythingHasItsRoomInALargeFont)
{
    showFile("plan.tessaloom", "the plan");
    QFont font = list->view()->font();
    font.setPointSize(24);
    list->view()->setFont(font);
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    downloadAndWait();
    auto* area = tljira::findView<QScrollArea>(list->view(), "downloadScrollArea");
    EXPECT_EQ(list->window()->frame().height(), 200);
    EXPECT_FALSE(label("downloadTitle")->isVisible());
    EXPECT_GE(list->downloadError()->height(), list->downloadError()->heightForWidth(list->downloadError()->width()));
    EXPECT_GE(area->widget()->height(), area->widget()->heightForWidth(area->widget()->width()));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, worksWithoutWhatAHostsOwnFileMayLack)
{
    showFile("plan.tessaloom", "the plan");
    for (const char* name : {"downloadTitle", "downloadName", "downloadDetails", "downloadDoneSize"})
        delete label(name);
    delete tljira::findView<QPushButton>(list->downloadView(), "cancelButton");
    downloadAndHold(Point::responseBody(3));
    server.release();
    waitForEnd();
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, looksOnceASecondWhileNothingComes)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseHead(0));
    RepeatedTimers timers;
    qApp->installEventFilter(&timers);
    ASSERT_TRUE(tests::waitUntil([&] { return !timers.fired.empty(); }));
    EXPECT_THAT(timers.fired, ElementsAre(1s));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, looksNoMoreOnceItHasEnded)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    RepeatedTimers timers;
    qApp->installEventFilter(&timers);
    QTimer later;
    later.start(1500ms);
    ASSERT_TRUE(tests::waitUntil([&] { return timers.fired.count(1500ms) > 0; }));
    EXPECT_THAT(timers.fired, ElementsAre(1500ms));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsHowFarItIs)
{
    showSyntheticFile(1'000'000);
    server.misbehave(Match::on("*/secure/*"), Fault().drip(50'000, 200ms));
    press();
    std::vector<int> shown;
    ASSERT_TRUE(tests::waitUntil([&] {
        if (percent().endsWith(u'%') && (shown.empty() || shown.back() != bar())) {
            shown.push_back(bar());
            EXPECT_EQ(percent(), QStringLiteral("%1 %").arg(bar()));
            EXPECT_EQ(error(), QString());
        }
        return list->isDone();
    }));
    EXPECT_GT(shown.size(), 3U);
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, takesTheTotalFromTheRecordNotFromTheAnswer)
{
    show(attach({.fileName = "plan.tessaloom",
                 .syntheticSize = 1'000'000,
                 .json = {.set = {{QStringLiteral("size"), 4'000'000}}}}));
    downloadAndWait();
    EXPECT_THAT(log.lines(), testing::IsSupersetOf({QStringLiteral("percent:25.000000 total:4000000 bytes: 1000000 0"),
                                                    QStringLiteral("percent:0.002500 total:4000000 bytes: 100 1")}));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, countsAHundredPercentAByteWithoutASize)
{
    show(attach({.fileName = "plan.tessaloom", .syntheticSize = 1'000'000, .json = {.without = {"size", "created"}}}));
    downloadAndWait();
    EXPECT_THAT(log.lines(), testing::Contains(QStringLiteral("percent:100000000.000000 total:0 bytes: 1000000 0")));
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, replacesEveryEarlierDownload)
{
    showFile("first.txt", "first");
    downloadAndWait();
    const QString first = target();
    showFile("second.txt", "second");
    downloadAndWait();
    EXPECT_FALSE(tljira::FileManager::fileExistsAtPath(first));
    EXPECT_THAT(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                ElementsAre(QStringLiteral("second.txt.tessaloom")));
    EXPECT_EQ(contentsOf(target()), QByteArray("second"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, downloadsTheSameFileAgain)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    list->reload();
    tests::drainMainQueue();
    downloadAndWait();
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

// The keyboard.

TEST_F(JAListAttachedFilesWindowDownloadTest, tabReachesTheButtonOfARowAndReturnDownloads)
{
    const auto first = attach({.fileName = "first.txt", .bytes = "first"});
    const auto second = attach({.fileName = "second.txt", .bytes = "second"});
    list->setAttachments({first, second});
    list->reload();
    tests::drainMainQueue();
    const auto hasFocus = [this](qint64 row) { return tests::cellAtRow(*list, row)->downloadButton()->hasFocus(); };
    list->tableView()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(hasFocus(0));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(hasFocus(1));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    waitForEnd();
    EXPECT_EQ(contentsOf(target()), QByteArray("second"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, spaceDownloadsToo)
{
    showFile("plan.tessaloom", "the plan");
    tests::cellAtRow(*list, 0)->downloadButton()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    waitForEnd();
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, noKeyThatBeganADownloadTouchesItAgain)
{
    showFile("plan.tessaloom", "the plan");
    tests::cellAtRow(*list, 0)->downloadButton()->setFocus();
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseBody(3)));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    waitForHeldExchange();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(QApplication::focusWidget(), key);
    tests::drainMainQueue();
    EXPECT_TRUE(returnCodes.empty());
    server.release();
    waitForEnd();
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(server.requests("*/secure/*").size(), 1U);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    tests::drainMainQueue();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    EXPECT_EQ(server.requests("*/secure/*").size(), 1U);
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theKeyboardIsOnTheProgressInThePressAndOnTheButtonAtTheEnd)
{
    showFile("plan.tessaloom", "the plan");
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(tests::waitUntil([this] { return list->tableView()->window()->isActiveWindow(); }));
        server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseHead(0)));
        press();
        const QPushButton* button = tests::closeButton(*list->window());
        EXPECT_TRUE(list->downloadProgressBar()->hasFocus());
        EXPECT_FALSE(button->isDefault());
        waitForHeldExchange();
        server.release();
        waitForEnd();
        EXPECT_TRUE(button->hasFocus());
        EXPECT_TRUE(button->isDefault());
        list->reload();
        tests::drainMainQueue();
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, bytesThatComeLeaveTheKeyboardOnCancel)
{
    downloadHalf();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const QPushButton* cancel = tests::closeButton(*list->window());
    ASSERT_TRUE(cancel->hasFocus());
    list->updateDownload(600'000, 1'000'000, std::nullopt, false);
    EXPECT_TRUE(cancel->hasFocus());
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theEndLeavesTheKeyboardInAListThatCameBack)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseBody(3));
    list->reload();
    tests::drainMainQueue();
    list->tableView()->setFocus();
    const QWidget* before = QApplication::focusWidget();
    ASSERT_TRUE(before && list->wrapperTableView()->isAncestorOf(before));
    int moves = 0;
    const QObject whileItEnds;
    QObject::connect(qApp, &QApplication::focusChanged, &whileItEnds, [&moves] { ++moves; });
    server.release();
    waitForEnd();
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(QApplication::focusWidget(), before);
    EXPECT_EQ(moves, 0);
}

TEST_F(JAListAttachedFilesWindowDownloadTest, spaceClosesTheSheetAtTheEnd)
{
    showFile("plan.tessaloom", "the plan");
    press();
    waitForEnd();
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    tests::drainMainQueue();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, returnDownloadsTheSelectedRow)
{
    const auto first = attach({.fileName = "first.txt", .bytes = "first"});
    const auto second = attach({.fileName = "second.txt", .bytes = "second"});
    list->setAttachments({first, second});
    list->reload();
    ASSERT_TRUE(tests::waitUntil([this] { return list->tableView()->hasFocus(); }));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(log.lines().filter(QStringLiteral("Download Action")), QStringList{QStringLiteral("Download Action 1")});
    waitForEnd();
    EXPECT_EQ(contentsOf(target()), QByteArray("second"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, isOfTheFirstRowWhereNoButtonAsks)
{
    const auto first = attach({.fileName = "first.txt", .bytes = "first"});
    const auto second = attach({.fileName = "second.txt", .bytes = "second"});
    list->setAttachments({first, second});
    list->downloadAction(nullptr);
    waitForEnd();
    EXPECT_EQ(contentsOf(target()), QByteArray("first"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aDoubleClickOnARowDownloadsItOnce)
{
    const auto first = attach({.fileName = "first.txt", .bytes = "first"});
    const auto second = attach({.fileName = "second.txt", .bytes = "second"});
    list->setAttachments({first, second});
    list->reload();
    tests::drainMainQueue();
    auto* title = tests::cellAtRow(*list, 1)->titleLabel();
    QTest::mouseClick(title, Qt::LeftButton);
    EXPECT_TRUE(list->wrapperTableView()->isVisible());
    QTest::mouseDClick(title, Qt::LeftButton);
    waitForEnd();
    EXPECT_EQ(contentsOf(target()), QByteArray("second"));
    EXPECT_EQ(server.requests("*/secure/*").size(), 1U);
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theSecondClickOfADoubleClickOnARowsButtonDoesNotCancel)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseHead(0));
    auto* button = tests::closeButton(*list->window());
    const QPoint middle = button->rect().center();
    const auto send = [&](QEvent::Type type) {
        QMouseEvent event(type, middle, button->mapToGlobal(middle), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &event);
    };
    // What the window system sends when the first click was on the row's button, in the same place.
    send(QEvent::MouseButtonDblClick);
    send(QEvent::MouseButtonRelease);
    EXPECT_TRUE(returnCodes.empty());
    // Nor where an earlier press, from which the pointer slipped off, was one in another download.
    send(QEvent::MouseButtonPress);
    QMouseEvent slipped(QEvent::MouseButtonRelease, QPoint(-5, -5), button->mapToGlobal(QPoint(-5, -5)), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(button, &slipped);
    button->hide();
    button->show();
    send(QEvent::MouseButtonDblClick);
    send(QEvent::MouseButtonRelease);
    EXPECT_TRUE(returnCodes.empty());
    // Whoever presses Cancel and slips off means it the second time.
    send(QEvent::MouseButtonPress);
    QCoreApplication::sendEvent(button, &slipped);
    EXPECT_TRUE(returnCodes.empty());
    send(QEvent::MouseButtonDblClick);
    send(QEvent::MouseButtonRelease);
    EXPECT_THAT(returnCodes, ElementsAre(0));
}

// Names and places.

TEST_F(JAListAttachedFilesWindowDownloadTest, anEvilNameEndsInsideTheFolder)
{
    showFile("plan", "the plan");
    for (const char* name : {"../../evil", "/tmp/evil", "..", "", "a\nb"}) {
        auto json = QJsonObject{{QStringLiteral("filename"), QString::fromUtf8(name)},
                                {QStringLiteral("content"), *list->attachments()[0]->downloadLink()}};
        show(tests::attachment(json));
        downloadAndWait();
        EXPECT_EQ(QFileInfo(target()).absolutePath(), folder) << name;
        EXPECT_EQ(contentsOf(target()), QByteArray("the plan")) << name;
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aNameOfThreeHundredLettersIsCutToFit)
{
    showFile(std::string(300, 'x'), "the plan");
    downloadAndWait();
    EXPECT_EQ(QFileInfo(target()).fileName(), QString(245, u'x') + QStringLiteral(".tessaloom"));
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aFileInPlaceOfTheFolderGoes)
{
    writeFile(folder, "in the way");
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aLinkInPlaceOfTheFolderGoesAndWhatItPointsToStays)
{
    const QString elsewhere = tljira::temporaryDirectory() + QStringLiteral("/elsewhere");
    QDir().mkpath(elsewhere);
    writeFile(elsewhere + QStringLiteral("/precious"), "precious");
    ASSERT_TRUE(QFile::link(elsewhere, folder));
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
    EXPECT_THAT(QDir(elsewhere).entryList(QDir::Files), ElementsAre(QStringLiteral("precious")));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aFolderThatCannotBeEmptiedStillTakesTheFile)
{
    QDir().mkpath(folder + QStringLiteral("/locked"));
    writeFile(folder + QStringLiteral("/locked/kept"), "kept");
    QFile::setPermissions(folder + QStringLiteral("/locked"), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    showFile("plan.tessaloom", "the plan");
    {
        const tests::WithoutPrivileges asAnyUser;
        downloadAndWait();
    }
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
    EXPECT_EQ(contentsOf(folder + QStringLiteral("/locked/kept")), QByteArray("kept"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, isDoneEvenIfTheFileCannotBePutInPlace)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseBody(4));
    QDir(folder).removeRecursively();
    writeFile(folder, "in the way");
    log.clear();
    server.release();
    waitForEnd();
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_TRUE(list->isDone());
    EXPECT_EQ(contentsOf(target()), std::nullopt);
    EXPECT_THAT(log.lines(), testing::Contains(testing::ResultOf(
                                 [](const QString& line) {
                                     return line.startsWith(QStringLiteral("Move item error: ")) &&
                                            line != QStringLiteral("Move item error: (null)");
                                 },
                                 true)));
}

// What goes wrong on the way.

TEST_F(JAListAttachedFilesWindowDownloadTest, savesAnErrorPageUnderTheNameOfTheFile)
{
    showFile("plan.tessaloom", "the plan");
    for (const int status : {401, 404, 500, 503}) {
        server.misbehave(Match::on("*/secure/*").once(), Fault().status(status, "<html>sorry</html>", "text/html"));
        list->reload();
        tests::drainMainQueue();
        downloadAndWait();
        EXPECT_EQ(percent(), QStringLiteral("DONE")) << status;
        EXPECT_EQ(contentsOf(target()), QByteArray("<html>sorry</html>")) << status;
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsAnErrorWhereverTheTransferBreaks)
{
    const std::string bytes = "a plan of thirty-two bytes......";
    showFile("plan.tessaloom", bytes);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(std::int64_t(at))));
        list->reload();
        tests::drainMainQueue();
        downloadAndWait();
        expectFailure(QStringLiteral("The network connection was lost."));
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsAnErrorWhereverTheHeadBreaks)
{
    showFile("plan.tessaloom", "the plan");
    for (const std::int64_t at : {0, 1, 12, 40}) {
        for (const bool abruptly : {false, true}) {
            const Point point = Point::responseHead(at);
            server.misbehave(Match::on("*/secure/*").limited(2),
                             abruptly ? Fault().reset(point) : Fault().close(point));
            list->reload();
            tests::drainMainQueue();
            downloadAndWait();
            expectFailure(QStringLiteral("The network connection was lost."));
            server.behave();
        }
    }
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsThatTheServerIsGone)
{
    showFile("plan.tessaloom", "the plan");
    auto json = QJsonObject{{QStringLiteral("filename"), QStringLiteral("plan.tessaloom")},
                            {QStringLiteral("content"), QStringLiteral("http://127.0.0.1:1/plan")}};
    show(tests::attachment(json));
    downloadAndWait();
    expectFailure(QStringLiteral("Could not connect to the server."));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, showsThatAnAttachmentHasNoContent)
{
    show(tests::attachmentNamed(QStringLiteral("plan.tessaloom")));
    downloadAndWait();
    expectFailure(QStringLiteral("unsupported URL"));
    EXPECT_EQ(list->path(), folder + QStringLiteral("/plan.tessaloom.tessaloom"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, aDownloadAfterAFailureWorks)
{
    showFile("plan.tessaloom", "the plan");
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    downloadAndWait();
    expectFailure(QStringLiteral("The network connection was lost."));
    list->reload();
    tests::drainMainQueue();
    downloadAndWait();
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(error(), QString());
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, theEndOfALaterRequestClearsTheErrorOfAFailedDownload)
{
    showFile("plan.tessaloom", "the plan");
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    downloadAndWait();
    client->getCurrentUser({});
    ASSERT_TRUE(tests::waitUntil([this] { return error().isEmpty(); }));
    EXPECT_EQ(percent(), QStringLiteral("0 %"));
    EXPECT_EQ(bar(), 0);
    EXPECT_FALSE(list->isDone());
}

TEST_F(JAListAttachedFilesWindowDownloadTest, goesOnThoughAnotherRequestFails)
{
    downloadHalf();
    letAnotherRequestFail();
    EXPECT_EQ(error(), QStringLiteral("The network connection was lost."));
    EXPECT_TRUE(list->downloadError()->isVisible());
    EXPECT_EQ(bar(), 100);
    EXPECT_EQ(title(), QStringLiteral("Downloading"));
    EXPECT_EQ(closeButtonText(), QStringLiteral("Cancel"));
    EXPECT_NE(barColor(), tljira::errorColor(list->view()->palette()));
    EXPECT_TRUE(label("downloadDetails")->isVisible());
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return list->isDone(); }));
    tests::drainMainQueue();
    EXPECT_EQ(title(), QStringLiteral("Downloaded"));
    EXPECT_EQ(error(), QString());
    EXPECT_EQ(contentsOf(target()).value_or(QByteArray()).size(), 1'000'000);
}

TEST_F(JAListAttachedFilesWindowDownloadTest, makesRoomForTheErrorOfAnotherRequestWhileItGoesOn)
{
    const QFont font = list->view()->font();
    const auto* area = tljira::findView<QScrollArea>(list->view(), "downloadScrollArea");
    const QLabel* heading = label("downloadTitle");
    int sizesThatNeedRoom = 0;
    for (int points = 10; points <= 24; ++points) {
        QFont larger = font;
        larger.setPointSize(points);
        list->view()->setFont(larger);
        downloadHalf();
        const bool hadHeading = heading->isVisible();
        letAnotherRequestFail();
        tests::drainMainQueue();
        sizesThatNeedRoom += hadHeading && !heading->isVisible();
        EXPECT_TRUE(!heading->isVisible() || area->widget()->height() <= area->viewport()->height()) << points;
        client->getCurrentUser({});
        ASSERT_TRUE(tests::waitUntil([this] { return error().isEmpty(); }));
        EXPECT_EQ(heading->isVisible(), hadHeading) << points;
        server.release();
        waitForEnd();
    }
    EXPECT_GT(sizesThatNeedRoom, 0);
}

TEST_F(JAListAttachedFilesWindowDownloadTest, keepsItsNumbersWhenAnotherRequestEnds)
{
    showSyntheticFile(40 << 20);
    server.misbehave(Match::on("*/secure/*"), Fault().hold(Point::responseBody(20 << 20)));
    press();
    ASSERT_TRUE(tests::waitUntil([this] { return details().startsWith(QStringLiteral("20.0 of 40.00 MB")); }));
    client->getCurrentUser({});
    ASSERT_TRUE(tests::waitUntil([this] { return percent() == QStringLiteral("0 %"); }));
    EXPECT_TRUE(details().startsWith(QStringLiteral("20.0 of 40.00 MB"))) << details().toStdString();
}

// Cancel.

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelEndsTheSheetAndTheDownloadBeforeTheAnswer)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseHead(0));
    pressClose();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    EXPECT_FALSE(list->window()->isVisible());
    ASSERT_TRUE(tests::waitUntil([this] { return error() == QStringLiteral("cancelled"); }));
    EXPECT_FALSE(list->isDone());
    EXPECT_EQ(list->path(), folder + QStringLiteral("/plan.tessaloom.tessaloom"));
    EXPECT_FALSE(tljira::FileManager::fileExistsAtPath(target()));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelEndsTheDownloadInItsMiddle)
{
    showSyntheticFile(1'000'000);
    downloadAndHold(Point::responseBody(500'000));
    pressClose();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    ASSERT_TRUE(tests::waitUntil([this] { return error() == QStringLiteral("cancelled"); }));
    EXPECT_FALSE(list->isDone());
    EXPECT_THAT(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), IsEmpty());
    ASSERT_TRUE(tests::waitUntil([this] { return server.openConnectionCount() == 0; }));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelWhenAllBytesButTheEndAreThere)
{
    showSyntheticFile(100'000);
    server.misbehave(Match::on("*/secure/*").once(), Fault().withoutLength().hold(Point::responseBody(100'000)));
    press();
    waitForHeldExchange();
    pressClose();
    ASSERT_TRUE(tests::waitUntil([this] { return error() == QStringLiteral("cancelled"); }));
    EXPECT_FALSE(list->isDone());
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelAfterTheEndKeepsTheFile)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    pressClose();
    tests::drainMainQueue();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    EXPECT_TRUE(list->isDone());
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(contentsOf(target()), QByteArray("the plan"));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelAfterAFailureEndsTheSheet)
{
    showFile("plan.tessaloom", "the plan");
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    downloadAndWait();
    pressClose();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    EXPECT_FALSE(list->isDone());
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelAfterTheEndLeavesItDone)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    pressClose();
    EXPECT_TRUE(list->isDone());
    EXPECT_THAT(returnCodes, ElementsAre(0));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelOfALaterDownloadLeavesItDone)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndWait();
    list->reload();
    tests::drainMainQueue();
    downloadAndHold(Point::responseBody(3));
    pressClose();
    ASSERT_TRUE(tests::waitUntil([this] { return !error().isEmpty(); }));
    EXPECT_TRUE(list->isDone());
    EXPECT_FALSE(tljira::FileManager::fileExistsAtPath(target()));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelLeavesNothingBesideTheFolder)
{
    showSyntheticFile(1'000'000);
    downloadAndHold(Point::responseBody(500'000));
    const QDir temporary(tljira::temporaryDirectory());
    const auto entries = [&temporary] {
        return temporary.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    };
    // What has come so far lies somewhere.
    ASSERT_TRUE(tests::waitUntil([&] { return entries().size() == 2; }));
    pressClose();
    ASSERT_TRUE(tests::waitUntil([this] { return !error().isEmpty(); }));
    tests::drainMainQueue();
    EXPECT_THAT(entries(), ElementsAre(QStringLiteral("com.tessalooom.JAController")));
    EXPECT_THAT(tljira::FileManager::filesBelowPath(temporary.path()), IsEmpty());
    EXPECT_THAT(QDir::temp().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                testing::Not(testing::Contains(testing::ResultOf(
                    [](const QString& name) { return name.contains(QStringLiteral("Download")); }, true))));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelTwiceEndsTheSheetOnce)
{
    showFile("plan.tessaloom", "the plan");
    downloadAndHold(Point::responseBody(3));
    list->cancalAction(nullptr);
    list->cancalAction(nullptr);
    ASSERT_TRUE(tests::waitUntil([this] { return error() == QStringLiteral("cancelled"); }));
    list->cancalAction(nullptr);
    tests::drainMainQueue();
    EXPECT_THAT(returnCodes, ElementsAre(0));
}

TEST_F(JAListAttachedFilesWindowDownloadTest, cancelInTheTurnOfTheStart)
{
    showFile("plan.tessaloom", "the plan");
    press();
    pressClose();
    ASSERT_TRUE(tests::waitUntil([this] { return error() == QStringLiteral("cancelled"); }));
    EXPECT_FALSE(list->isDone());
}

// One at a time.

class TwoDownloadsTest : public JAListAttachedFilesWindowDownloadTest
{
protected:
    void SetUp() override
    {
        JAListAttachedFilesWindowDownloadTest::SetUp();
        const auto first = attach({.fileName = "first", .bytes = firstBytes});
        const auto second = attach({.fileName = "second", .bytes = secondBytes});
        list->setAttachments({first, second});
        list->reload();
        tests::drainMainQueue();
    }

    /// What a look-up does that answers during a download.
    void bringTheListBack()
    {
        list->reload();
        tests::drainMainQueue();
        ASSERT_TRUE(list->wrapperTableView()->isVisible());
    }

    bool isSecondThere() const
    {
        return list->isDone() && contentsOf(folder + QStringLiteral("/second.tessaloom")) == secondBytes;
    }

    void expectTheSecondAlone()
    {
        tests::drainMainQueue();
        EXPECT_EQ(percent(), QStringLiteral("DONE"));
        EXPECT_EQ(error(), QString());
        EXPECT_EQ(list->path(), folder + QStringLiteral("/second.tessaloom"));
        EXPECT_EQ(contentsOf(target()), QByteArray(secondBytes));
        EXPECT_THAT(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                    ElementsAre(QStringLiteral("second.tessaloom")));
    }

    static constexpr char firstBytes[] = "the bytes of the first";
    static constexpr char secondBytes[] = "what the second one holds";
};

TEST_F(TwoDownloadsTest, aRowThatIsPressedDuringADownloadGetsItsOwnBytes)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    press(1);
    EXPECT_EQ(list->path(), folder + QStringLiteral("/second.tessaloom"));
    EXPECT_TRUE(list->downloadView()->isVisible());
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return server.openConnectionCount() <= 1; }));
    expectTheSecondAlone();
}

TEST_F(TwoDownloadsTest, theEndOfTheFirstIsNotShownAsTheSeconds)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseHead(0)));
    press(1);
    ASSERT_TRUE(tests::waitUntil([this] { return server.requests("*/secure/*").size() == 2; }));
    tests::drainMainQueue();
    EXPECT_EQ(error(), QString());
    EXPECT_NE(percent(), QStringLiteral("DONE"));
    // The second is held a moment after its request has been noted.
    ASSERT_TRUE(tests::waitUntil([this] {
        server.release();
        return isSecondThere();
    }));
    expectTheSecondAlone();
}

TEST_F(TwoDownloadsTest, theFolderIsMadeAnewOnlyWhenTheFirstHasEnded)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    writeFile(folder + QStringLiteral("/of the first"), "not yet");
    press(1);
    EXPECT_TRUE(tljira::FileManager::fileExistsAtPath(folder + QStringLiteral("/of the first")));
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
}

TEST_F(TwoDownloadsTest, aFirstThatArrivesNeverthelessIsNotTakenForTheSecond)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    press(1);
    const QString arrived = tljira::temporaryDirectory() + QStringLiteral("/arrived");
    writeFile(arrived, firstBytes);
    client->didFinishDownloadingToURL(client->downloadTask(), arrived);
    EXPECT_FALSE(list->isDone());
    EXPECT_EQ(contentsOf(folder + QStringLiteral("/first.tessaloom")), QByteArray(firstBytes));
    EXPECT_EQ(contentsOf(target()), std::nullopt);
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
}

TEST_F(TwoDownloadsTest, aRowThatIsPressedRightAfterACancelBeginsAndIsNotCalledCancelled)
{
    downloadAndHold(Point::responseBody(5));
    pressClose();
    parent->beginSheet(list->window(), [this](int code) { returnCodes.push_back(code); });
    list->reload();
    QCoreApplication::sendPostedEvents(list->tableView());
    list->downloadAction(tests::cellAtRow(*list, 1)->downloadButton());
    ASSERT_TRUE(tests::waitUntil([this] {
        EXPECT_EQ(error(), QString());
        return isSecondThere();
    }));
    expectTheSecondAlone();
}

TEST_F(TwoDownloadsTest, cancelWhileTheSecondWaitsBeginsNothing)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    press(1);
    pressClose();
    EXPECT_THAT(returnCodes, ElementsAre(0));
    ASSERT_TRUE(tests::waitUntil([this] { return client->downloadTask()->hasEnded(); }));
    tests::drainMainQueue();
    EXPECT_EQ(server.requests("*/secure/*").size(), 1U);
    EXPECT_FALSE(list->isDone());
    EXPECT_EQ(contentsOf(target()), std::nullopt);
    client->getCurrentUser({});
    ASSERT_TRUE(tests::waitUntil([this] { return server.requests("*/myself").size() == 1; }));
    tests::drainMainQueue();
    EXPECT_EQ(server.requests("*/secure/*").size(), 1U);
}

TEST_F(TwoDownloadsTest, theLastOfThreeRowsIsTheOneThatBegins)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    press(0);
    list->reload();
    list->downloadAction(tests::cellAtRow(*list, 1)->downloadButton());
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
    EXPECT_EQ(server.requests("*/secure/*").size(), 2U);
}

TEST_F(TwoDownloadsTest, anotherWindowsDownloadIsToldThatItWasCancelled)
{
    const auto other = JAListAttachedFilesWindow::init();
    const auto host = tests::shownWindow();
    host->beginSheet(other->window(), [](int) {});
    other->setAttachments({list->attachments().at(0)});
    other->reload();
    tests::drainMainQueue();
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseBody(5)));
    other->downloadAction(tests::cellAtRow(*other, 0)->downloadButton());
    waitForHeldExchange();
    press(1);
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
    EXPECT_EQ(other->downloadError()->text(), QStringLiteral("cancelled"));
    EXPECT_FALSE(other->isDone());
}

/// Reports the end of a request a second time.
class SecondReport : public client::TransferListener
{
public:
    void taskEnded(const tljira::URLSessionTask&, const std::optional<tljira::Error>& error) override
    {
        if (!std::exchange(m_hasReported, true))
            JAController::sharedInstance()->didCompleteWithError(nullptr, error);
    }

private:
    bool m_hasReported = false;
};

TEST_F(TwoDownloadsTest, theSecondBeginsOnceHoweverManyRequestsEndWithTheFirst)
{
    downloadAndHold(Point::responseBody(5));
    bringTheListBack();
    const auto another = std::make_shared<SecondReport>();
    client::TransferListener::add(another);
    press(1);
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
    EXPECT_EQ(server.requests("*/secure/*").size(), 2U);
}

TEST_F(TwoDownloadsTest, ofTwoWindowsThatWaitForAThirdEachGetsItsOwnBytesOrNone)
{
    const auto other = JAListAttachedFilesWindow::init();
    const auto host = tests::shownWindow();
    host->beginSheet(other->window(), [](int) {});
    other->setAttachments({list->attachments().at(0)});
    other->reload();
    tests::drainMainQueue();
    const auto running = attach({.fileName = "running", .bytes = "what nobody waits for"});
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseBody(5)));
    client->downloadFile(running->downloadLink(), {}, folder + QStringLiteral("/running"));
    waitForHeldExchange();
    // Both in one turn of the event loop: the cancelled one ends after that.
    other->downloadAction(tests::cellAtRow(*other, 0)->downloadButton());
    list->downloadAction(tests::cellAtRow(*list, 1)->downloadButton());
    const auto hasEnded = [](const JAListAttachedFilesWindow& window) {
        return window.downloadPercent()->text() == QStringLiteral("DONE") || !window.downloadError()->text().isEmpty();
    };
    ASSERT_TRUE(tests::waitUntil([&] { return hasEnded(*list) && hasEnded(*other); }));
    ASSERT_TRUE(tests::waitUntil([this] { return isSecondThere(); }));
    expectTheSecondAlone();
    EXPECT_FALSE(other->isDone());
    EXPECT_EQ(other->downloadError()->text(), QStringLiteral("cancelled"));
}

// Ends from outside.

TEST_F(JAListAttachedFilesWindowDownloadTest, aDownloadGoesOnWhenTheWindowsClose)
{
    showSyntheticFile(1'000'000);
    downloadAndHold(Point::responseBody(500'000));
    parent->close();
    EXPECT_THAT(returnCodes, ElementsAre(tljira::ModalResponse::Stop));
    server.release();
    waitForEnd();
    EXPECT_TRUE(list->isDone());
    EXPECT_EQ(contentsOf(target()).value_or(QByteArray()).size(), 1'000'000);
}

} // namespace
