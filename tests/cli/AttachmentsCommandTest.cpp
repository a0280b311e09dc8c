#include "tests/cli/CommandTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using tests::words;

class AttachmentsCommand : public tests::CommandTest
{
protected:
    AttachmentsCommand()
    {
        attach("old.tessaloom", "12345", "2017-10-16T10:06:29.399+0200");
        attach("picture.png", "1", "2018-01-01T00:00:00.000+0000");
        attach("new \x1b[31m.tessaloom", std::string(100000, 'x'), "2019-12-31T23:59:59.000+0000");
    }
};

TEST_F(AttachmentsCommand, listsDocumentsNewestFirst)
{
    logIn();
    EXPECT_EQ(run(words("attachments ABC-1")), Result({0,
                                                       "10002  100000  2019-12-31 23:59:59  new ?[31m.tessaloom\n"
                                                       "10000       5  2017-10-16 08:06:29  old.tessaloom\n",
                                                       {}}));
}

TEST_F(AttachmentsCommand, listsEverythingInTheServersOrder)
{
    logIn();
    EXPECT_EQ(run(words("attachments --all ABC-1")),
              Result({0,
                      "10000       5  2017-10-16 08:06:29  old.tessaloom\n"
                      "10001       1  2018-01-01 00:00:00  picture.png\n"
                      "10002  100000  2019-12-31 23:59:59  new ?[31m.tessaloom\n",
                      {}}));
}

TEST_F(AttachmentsCommand, listsTheKindThatWasChosenInPlaceOfDocuments)
{
    logIn();
    for (const char* command : {"attachments ABC-1 --documents png", "attachments --documents .png ABC-1"})
        EXPECT_EQ(run(words(command)), Result({0, "10001  1  2018-01-01 00:00:00  picture.png\n", {}})) << command;
    EXPECT_EQ(run(words("attachments ABC-1 --documents PNG")), Result({0, {}, {}}));
    EXPECT_EQ(run(words("attachments ABC-1 --json --documents odt")), Result({0, "[]\n", {}}));
}

TEST_F(AttachmentsCommand, listsSeveralKindsNewestFirst)
{
    logIn();
    attach("notes.odt", "12", "2018-06-01T00:00:00.000+0000");
    EXPECT_EQ(run(words("attachments ABC-1 --documents png --documents odt")),
              Result({0,
                      "10003  2  2018-06-01 00:00:00  notes.odt\n"
                      "10001  1  2018-01-01 00:00:00  picture.png\n",
                      {}}));
}

TEST_F(AttachmentsCommand, listsEveryKindNewestFirst)
{
    logIn();
    attach("README", "12", "2018-06-01T00:00:00.000+0000");
    const Result everything = {0,
                               "10002  100000  2019-12-31 23:59:59  new ?[31m.tessaloom\n"
                               "10003       2  2018-06-01 00:00:00  README\n"
                               "10001       1  2018-01-01 00:00:00  picture.png\n"
                               "10000       5  2017-10-16 08:06:29  old.tessaloom\n",
                               {}};
    EXPECT_EQ(run(words("attachments ABC-1 --documents all")), everything);
    EXPECT_EQ(run(words("attachments ABC-1 --documents png --documents all")), everything);
    EXPECT_EQ(run(words("attachments ABC-1 --documents .all")), Result({0, {}, {}}));
}

TEST_F(AttachmentsCommand, remembersNoKinds)
{
    logIn();
    const Result before = run(words("attachments ABC-1"));
    EXPECT_EQ(run(words("attachments ABC-1 --documents png")).status, 0);
    EXPECT_EQ(run(words("attachments ABC-1")), before);
}

TEST_F(AttachmentsCommand, printsOneJSONArray)
{
    logIn();
    const Result result = run(words("attachments ABC-1 --json"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    const QJsonArray array = QJsonDocument::fromJson(result.output).array();
    ASSERT_EQ(array.size(), 2);
    const QJsonObject old = {{u"id"_s, u"10000"_s},
                             {u"name"_s, u"old.tessaloom"_s},
                             {u"size"_s, 5},
                             {u"created"_s, u"2017-10-16T10:06:29.399+0200"_s},
                             {u"date"_s, u"2017-10-16T08:06:29.399Z"_s},
                             {u"content"_s, u"http://jira.example.test/secure/attachment/10000/old.tessaloom"_s}};
    EXPECT_EQ(array.at(1).toObject(), old);
    EXPECT_EQ(array.at(0).toObject().value(u"name"_s), u"new \x1b[31m.tessaloom"_s);
}

TEST_F(AttachmentsCommand, printsNothingForAnIssueWithoutThem)
{
    logIn();
    server.addIssue("ABC-2");
    EXPECT_EQ(run(words("attachments ABC-2")), Result({0, {}, {}}));
    EXPECT_EQ(run(words("attachments ABC-2 --json")), Result({0, "[]\n", {}}));
}

TEST_F(AttachmentsCommand, doesNotTakeAPageForPeopleForAnIssueWithoutThem)
{
    logIn();
    server.misbehave(Match::on("*"), Fault().status(200, "<html>Log in</html>", "text/html"));
    EXPECT_EQ(run(words("attachments ABC-1")), Result({1, {}, "The server’s answer is no issue.\n"}));
}

TEST_F(AttachmentsCommand, doesNotTakeAnotherAnswerForAnIssueWithoutThem)
{
    logIn();
    for (const char* answer : {"", "{}", "[]", "null", R"({"fields": []})", R"({"errorMessages": ["x"]})"}) {
        server.behave();
        server.misbehave(Match::on("/rest/api/2/issue/*"), Fault().status(200, answer, "application/json"));
        for (const char* command : {"attachments ABC-1", "attachments ABC-1 --json", "download ABC-1 plan"})
            EXPECT_EQ(run(words(command)), Result({1, {}, "The server’s answer is no issue.\n"})) << answer;
    }
}

TEST_F(AttachmentsCommand, failsForAnUnknownIssue)
{
    logIn();
    EXPECT_EQ(run(words("attachments NO-1 --json")),
              Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 404.)\n"}));
}

TEST_F(AttachmentsCommand, sendsAnyKeyAsOnePartOfTheAddress)
{
    logIn();
    EXPECT_EQ(run({u"attachments"_s, u"A/../b c?d"_s}).status, 1);
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/A%2F..%2Fb%20c%3Fd");
}

} // namespace
