#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "tests/kit/Files.h"
#include "tests/screenreader/ReaderTest.h"

namespace {

using namespace tests;

/// Both jobs, by nothing but what a screen reader has: actions of what it finds, and texts that it puts into fields.
class JobsByReaderTest : public ReaderTest
{
protected:
    void logInByReader()
    {
        write(QStringLiteral("Server address"), Jira::address);
        write(QStringLiteral("User name or e-mail"), QLatin1String(Jira::user));
        write(QStringLiteral("Password"), QLatin1String(Jira::password));
        press(QStringLiteral("Log In"));
    }

    bool hears(const QString& words)
    {
        QStringList heard;
        return waitUntil([&] {
            heard.append(alerts());
            return heard.contains(words);
        });
    }
};

TEST_F(JobsByReaderTest, attachesADocument)
{
    const LoneDocument document(QByteArray(1 << 20, 'x'));
    const auto entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    entry->closeOnCancel();
    entry->showWindow();
    ASSERT_NO_FATAL_FAILURE(logInByReader());
    ASSERT_NO_FATAL_FAILURE(write(QStringLiteral("Issue key"), QStringLiteral("ABC-1")));
    ASSERT_NO_FATAL_FAILURE(press(QStringLiteral("Upload")));
    EXPECT_TRUE(hears(QStringLiteral("Attached to ABC-1")));
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.attachments("ABC-1").at(0).size, 1 << 20);

    // First the sheet's, then the window's.
    ASSERT_NO_FATAL_FAILURE(press(QStringLiteral("Close")));
    ASSERT_TRUE(waitUntil([&] { return !entry->window()->attachedSheet(); }));
    ASSERT_NO_FATAL_FAILURE(press(QStringLiteral("Close")));
    EXPECT_TRUE(waitUntil([&] { return !entry->window()->isVisible(); }));
}

TEST_F(JobsByReaderTest, fetchesADocument)
{
    server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
    server.addAttachment("ABC-1", {.fileName = "other.tessaloom", .bytes = "another"});
    logIn();
    const auto entry = JMWindowController::init();
    entry->showWindow();
    ASSERT_NO_FATAL_FAILURE(write(QStringLiteral("Issue key"), QStringLiteral("ABC-1")));
    ASSERT_NO_FATAL_FAILURE(press(QStringLiteral("Show Documents")));
    ASSERT_NO_FATAL_FAILURE(press(QStringLiteral("Download plan.tessaloom")));
    ASSERT_NO_FATAL_FAILURE(press(QStringLiteral("Open")));
    EXPECT_TRUE(waitUntil([&] { return !entry->window()->isVisible(); }));
    const auto panel = entry->bodyViewController();
    ASSERT_TRUE(panel->path().has_value());
    EXPECT_EQ(contentsOf(*panel->path()), "the plan");
}

} // namespace
