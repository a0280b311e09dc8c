#include "tests/framework/jobs/JobsTest.h"

#include "constants/JAConstants.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "platform/foundation/settings/UserDefaults.h"

#include <QDir>
#include <QProgressBar>
#include <QTimer>

namespace tests {

using standin::Fault;
using standin::Match;
using standin::Point;

JobsTest::JobsTest(const standin::Options& options)
    : JiraTest(options)
    , host(std::make_unique<QWidget>())
{
    tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
}

JobsTest::~JobsTest()
{
    server.behave();
    host.reset();
    drainMainQueue();
}

void JobsTest::SetUp()
{
    logIn();
    host->show();
}

TLJiraJobs::Ended JobsTest::remember()
{
    return [this](const Result& result) { ends.push_back(result); };
}

bool JobsTest::waitForEnd(std::size_t count)
{
    const bool came = waitUntil([&] { return ends.size() >= count; });
    drainMainQueue();
    return came && ends.size() == count;
}

bool JobsTest::attach(const TLJiraJobs::Document& document, TLJiraJobs::Options options)
{
    const bool isAccepted = TLJiraJobs::attach(document, host.get(), remember(), options);
    if (isAccepted)
        upload = std::dynamic_pointer_cast<TLJiraUpload>(client->delegate());
    return isAccepted;
}

void JobsTest::open(const TLJiraJobs::Document& document, TLJiraJobs::Options options)
{
    ASSERT_TRUE(attach(document, options));
    ASSERT_NE(upload, nullptr);
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(panel().uploadView()); }));
}

void JobsTest::open(TLJiraJobs::Options options)
{
    open({QStringLiteral("plan.tessaloom"), bytes}, options);
}

void JobsTest::pressUpload(const QString& key)
{
    ASSERT_TRUE(waitUntil([this] { return panel().taskTextField()->isEnabled(); }));
    ui::type(panel().taskTextField(), key);
    ui::click(panel().uploadFileButton());
    ASSERT_TRUE(panel().isUploading());
}

bool JobsTest::waitForAttempt() const
{
    return waitUntil([this] { return !panel().isUploading(); });
}

void JobsTest::closeSheet() const
{
    ui::click(sheet().cancelButton());
    ASSERT_TRUE(waitUntil([this] { return panel().taskTextField()->isEnabled(); }));
}

void JobsTest::holdUploads()
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(65536)));
}

void JobsTest::openAndHold(TLJiraJobs::Options options)
{
    holdUploads();
    open({QStringLiteral("plan.tessaloom"), heldBytes}, options);
    pressUpload();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
}

std::vector<std::string> JobsTest::attached(const std::string& key) const
{
    std::vector<std::string> contents;
    for (const auto& attachment : server.attachments(key))
        contents.push_back(server.content(attachment.id).value_or("(none)"));
    return contents;
}

int JobsTest::uploadsWith(const std::string& content) const
{
    int count = 0;
    for (const auto& request : server.requests())
        count += request.method == "POST" && request.body.find("\r\n\r\n" + content + "\r\n") != std::string::npos;
    return count;
}

bool JobsTest::fetch(TLJiraJobs::Options options)
{
    const bool isAccepted = TLJiraJobs::fetch(host.get(), remember(), options);
    if (isAccepted)
        entry = std::dynamic_pointer_cast<JMWindowController>(client->delegate());
    return isAccepted;
}

void JobsTest::openList()
{
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(fetchPanel().getAttachButton()); }));
    ui::type(fetchPanel().issueKeyTextField(), QStringLiteral("ABC-1"));
    ui::click(fetchPanel().getAttachButton());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(list().tableView()); }));
}

void JobsTest::pressDownload() const
{
    const auto button = [this]() -> QPushButton* {
        auto* const cell = dynamic_cast<JAAttachedCell*>(list().tableView()->cellAtRow(0));
        return cell ? cell->downloadButton() : nullptr;
    };
    ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(button()); }));
    ui::click(button());
}

bool JobsTest::waitForDownload() const
{
    return waitUntil([this] { return list().isDone(); });
}

void JobsTest::leaveList() const
{
    ui::press(list().window()->widget()->window(), Qt::Key_Escape);
}

void JobsTest::fetchFirst()
{
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());
    const std::size_t before = ends.size();
    leaveList();
    ASSERT_TRUE(waitForEnd(before + 1));
}

QStringList JobsTest::foldersNamed(const QString& prefix)
{
    return QDir(tljira::temporaryDirectory()).entryList({prefix + u'*'}, QDir::Dirs);
}

bool runsOnDuring(const std::function<void()>& steps)
{
    const auto other = JMWindowController::init();
    bool isClosedByItsUser = false;
    const QObject duringRun;
    // A run that somebody has ended has no further turn. Not 0: posted events would not be handed out in the meantime.
    QTimer::singleShot(1, &duringRun, [&] {
        steps();
        QTimer::singleShot(1, &duringRun, [&] {
            isClosedByItsUser = true;
            closeByTitleBar(*other);
        });
    });
    other->run({});
    return isClosedByItsUser;
}

void closeByTitleBar(const tljira::WindowController& controller)
{
    controller.windowIfLoaded()->widget()->close();
}

} // namespace tests
