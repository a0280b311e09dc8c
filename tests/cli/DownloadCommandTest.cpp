#include "tests/cli/CommandTest.h"
#include "tests/kit/OldFiles.h"
#include "tests/kit/SmallDisk.h"

#include <QDir>
#include <QTemporaryDir>

#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using standin::Point;
using tests::words;

class DownloadCommand : public tests::CommandTest
{
protected:
    DownloadCommand() { logIn(); }

    /// What the tool prints for a file in its folder.
    QByteArray printed(const QString& name) const
    {
        return (QDir(path({})).canonicalPath() + u'/' + name + u'\n').toUtf8();
    }
    void misbehaveOnFiles(const Fault& fault) { server.misbehave(Match::on("/secure/attachment/*"), fault); }
    void expectNothingLeft() const
    {
        EXPECT_EQ(workItems(), QStringList());
        EXPECT_EQ(temporaryFiles(), QStringList());
    }
};

TEST_F(DownloadCommand, fetchesByNameIntoTheCurrentFolder)
{
    const std::string bytes = standin::Server::pattern(0, 300000);
    attach("my plan.tessaloom", bytes);
    EXPECT_EQ(run({u"download"_s, u"ABC-1"_s, u"my plan.tessaloom"_s}),
              Result({0, printed(u"my plan.tessaloom"_s), {}}));
    EXPECT_EQ(readFile(u"my plan.tessaloom"_s), QByteArray::fromStdString(bytes));
    EXPECT_EQ(workItems(), QStringList{u"my plan.tessaloom"_s});
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(DownloadCommand, fetchesTheNewestOfAName)
{
    attach("plan", "newer", "2018-01-01T00:00:00.000+0000");
    attach("plan", "older", "2017-01-01T00:00:00.000+0000");
    EXPECT_EQ(run(words("download ABC-1 plan")).status, 0);
    EXPECT_EQ(readFile(u"plan"_s), "newer");
}

TEST_F(DownloadCommand, fetchesById)
{
    attach("plan", "first");
    attach("plan", "second");
    EXPECT_EQ(run(words("download ABC-1 10000 --to first")).status, 0);
    EXPECT_EQ(run(words("download ABC-1 10001 --to second")).status, 0);
    EXPECT_EQ(readFile(u"first"_s), "first");
    EXPECT_EQ(readFile(u"second"_s), "second");
}

TEST_F(DownloadCommand, fetchesAnEmptyFile)
{
    attach("empty", "");
    EXPECT_EQ(run(words("download ABC-1 empty")), Result({0, printed(u"empty"_s), {}}));
    EXPECT_EQ(readFile(u"empty"_s), "");
}

TEST_F(DownloadCommand, putsTheFileIntoAFolder)
{
    attach("plan", "bytes");
    ASSERT_TRUE(QDir(path({})).mkdir(u"folder"_s));
    EXPECT_EQ(run(words("download ABC-1 plan --to folder")), Result({0, printed(u"folder/plan"_s), {}}));
    EXPECT_EQ(readFile(u"folder/plan"_s), "bytes");
}

TEST_F(DownloadCommand, leavesWhatIsThere)
{
    attach("plan", "theirs");
    writeFile(u"plan"_s, "mine");
    const auto filesBefore = server.requests("/secure/*").size();
    const Result result = run(words("download ABC-1 plan"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.startsWith("“plan” couldn’t be saved in “")) << result.error.toStdString();
    EXPECT_TRUE(result.error.endsWith("” because an item with the same name already exists.\n"));
    EXPECT_EQ(readFile(u"plan"_s), "mine");
    EXPECT_EQ(workItems(), QStringList{u"plan"_s});
    EXPECT_EQ(server.requests("/secure/*").size(), filesBefore);
}

TEST_F(DownloadCommand, leavesAFolderOfTheAttachmentsName)
{
    attach("plan", "theirs");
    ASSERT_TRUE(QDir(path({})).mkpath(u"plan/sub"_s));
    EXPECT_EQ(run(words("download ABC-1 plan")).status, 1);
    EXPECT_TRUE(QDir(path(u"plan/sub"_s)).exists());
}

TEST_F(DownloadCommand, keepsHostileNamesInTheFolder)
{
    attach("../../../evil.tessaloom", "bytes");
    attach("/tmp/evil\n\x1b[2J", "bytes");
    server.addAttachment("ABC-1", {.fileName = "up", .bytes = "bytes", .json = {.set = {{u"filename"_s, u".."_s}}}});
    EXPECT_EQ(run(words("download ABC-1 10000")), Result({0, printed(u".._.._.._evil.tessaloom"_s), {}}));
    EXPECT_EQ(run(words("download ABC-1 10001")), Result({0, printed(u"_tmp_evil__[2J"_s), {}}));
    EXPECT_EQ(run(words("download ABC-1 10002")), Result({0, printed(u"_"_s), {}}));
    EXPECT_EQ(workItems().size(), 3);
}

TEST_F(DownloadCommand, failsForAnUnknownName)
{
    attach("plan", "bytes");
    EXPECT_EQ(run(words("download ABC-1 pla")), Result({1, {}, "ABC-1 has no attachment “pla”.\n"}));
    EXPECT_EQ(run(words("download NO-1 plan")),
              Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 404.)\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, doesNotTakeALoginPageForTheFile)
{
    attach("plan", std::string(60444, 'x'));
    misbehaveOnFiles(Fault().status(200, "<html>Log in</html>", "text/html"));
    EXPECT_EQ(run(words("download ABC-1 plan")),
              Result({1, {}, "The server sent 19 bytes for “plan” instead of 60444.\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, doesNotTakeAnErrorForTheFile)
{
    attach("plan", "bytes");
    misbehaveOnFiles(Fault().status(404, "not found"));
    EXPECT_EQ(run(words("download ABC-1 plan")),
              Result({1, {}, "The server sent more than the 5 bytes that “plan” has.\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, stopsWhenMoreComesThanTheAttachmentHas)
{
    attach("plan", "bytes");
    misbehaveOnFiles(Fault().status(200, std::string(8 << 20, 'x')).hold(Point::responseBody(4 << 20)));
    EXPECT_EQ(run(words("download ABC-1 plan")),
              Result({1, {}, "The server sent more than the 5 bytes that “plan” has.\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, failsWhenTheBodyIsCutShort)
{
    attachSynthetic("plan", 1 << 20);
    misbehaveOnFiles(Fault().close(Point::responseBody(100000)));
    EXPECT_EQ(run(words("download ABC-1 plan")), Result({1, {}, "The network connection was lost.\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, failsWhenABodyWithoutLengthIsCutShort)
{
    attachSynthetic("plan", 1 << 20);
    misbehaveOnFiles(Fault().withoutLength().close(Point::responseBody(100000)));
    EXPECT_EQ(run(words("download ABC-1 plan")),
              Result({1, {}, "The server sent 100000 bytes for “plan” instead of 1048576.\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, failsBeforeTheTransferWhereTheFolderIsMissing)
{
    attach("plan", "bytes");
    for (const char* command : {"download ABC-1 plan --to no/plan", "download ABC-1 plan --to no/"}) {
        EXPECT_EQ(run(words(command)),
                  Result({1, {}, "“plan” couldn’t be saved in “no” because there is no such folder.\n"}));
    }
    EXPECT_TRUE(server.requests("/secure/*").empty());
    expectNothingLeft();
}

TEST_F(DownloadCommand, failsWhenTheDestinationsDiskIsFull)
{
    const QTemporaryDir small;
    const tests::SmallDisk disk(small.path(), 1024);
    if (!disk.isThere())
        GTEST_SKIP() << "no file system may be mounted here";
    attachSynthetic("plan", 3'000'000);
    const Result result = run({u"download"_s, u"ABC-1"_s, u"plan"_s, u"--to"_s, small.path()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.endsWith("because there isn’t enough space.\n")) << result.error.toStdString();
    EXPECT_FALSE(result.error.contains(".tljira-")) << result.error.toStdString();
    EXPECT_EQ(QDir(small.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    expectNothingLeft();
}

TEST_F(DownloadCommand, failsWhenTheTemporaryDiskIsFull)
{
    const QTemporaryDir small;
    const tests::SmallDisk disk(small.path(), 1024);
    if (!disk.isThere())
        GTEST_SKIP() << "no file system may be mounted here";
    environment.insert(u"TMPDIR"_s, small.path());
    attachSynthetic("plan", 3'000'000);
    EXPECT_EQ(run(words("download ABC-1 plan")),
              Result({1, {}, "The download couldn’t be saved because the disk is full.\n"}));
    expectNothingLeft();
}

TEST_F(DownloadCommand, doesNotBlameTheServerForAFileThatCannotBePutInPlace)
{
    attachSynthetic("plan", 1 << 20);
    misbehaveOnFiles(Fault().hold(Point::responseBody(100000)));
    const auto tool = start(words("download ABC-1 plan"));
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    QDir temporary(environment.value(u"TMPDIR"_s) + u"/TLJiraController-"_s + QString::number(geteuid()));
    const QStringList receiving = temporary.entryList({u".tljira-*"_s}, QDir::Dirs | QDir::Hidden);
    ASSERT_EQ(receiving.size(), 1);
    ASSERT_TRUE(temporary.rmdir(receiving.first()));
    server.release();
    EXPECT_EQ(tool->status(), 1);
    EXPECT_EQ(
        tool->error(),
        u"“plan” has arrived but couldn’t be saved in “%1”.\n"_s.arg(temporary.filePath(receiving.first())).toUtf8());
    expectNothingLeft();
}

TEST_F(DownloadCommand, savesAFileWithoutWhatTurnsItsNameAround)
{
    attach("plan\u202Egpj.tessaloom", "bytes");
    EXPECT_EQ(run(words("download ABC-1 10000")), Result({0, printed(u"plangpj.tessaloom"_s), {}}));
    EXPECT_EQ(workItems(), QStringList(u"plangpj.tessaloom"_s));
}

TEST_F(DownloadCommand, removesWhatKilledRunsLeftLongAgo)
{
    attach("plan", "bytes");
    const QString temporary = environment.value(u"TMPDIR"_s) + u"/TLJiraController-"_s + QString::number(geteuid());
    for (const QString& folder : {path(u".tljira-old"_s), path(u".tljira-new"_s), temporary + u"/.tljira-old"_s}) {
        ASSERT_TRUE(QDir().mkpath(folder));
        ASSERT_TRUE(QFile(folder + u"/plan"_s).open(QIODevice::WriteOnly));
        if (folder.endsWith(u"old"))
            tests::makeOlder(folder, std::chrono::hours(25));
    }
    const QString left = temporary + u"/Download_0123.tmp"_s;
    ASSERT_TRUE(QFile(left).open(QIODevice::WriteOnly));
    tests::makeOlder(left, std::chrono::hours(25));
    EXPECT_EQ(run(words("download ABC-1 plan")).status, 0);
    EXPECT_EQ(workItems(), (QStringList{u".tljira-new"_s, u"plan"_s}));
    // Beside the command, which does not wait for it: a run that is very short leaves it to the next.
    EXPECT_TRUE(
        tests::waitUntil([this] { return temporaryFiles().isEmpty() || run(words("attachments ABC-1")).status != 0; }));
    EXPECT_EQ(temporaryFiles(), QStringList());
    EXPECT_FALSE(QFile::exists(temporary + u"/.tljira-old"_s));
}

} // namespace
