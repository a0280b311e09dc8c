#include "cli/JSONOutput.h"

#include "tests/records/RecordMaking.h"
#include "tests/kit/Printers.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using tests::attachment;
using tests::attachments;

TEST(JSONOutput, writesAttachmentsOnOneLine)
{
    const auto list = attachments({attachment(u"7"_s, u"a \"b\"\n"_s, u"2017-10-16T10:06:29.399+0200"_s, 5)});
    EXPECT_EQ(cli::jsonOf(list), R"([{"content":"http://h/7","created":"2017-10-16T10:06:29.399+0200",)"
                                 R"("date":"2017-10-16T08:06:29.399Z","id":"7","name":"a \"b\"\n","size":5}])"
                                 "\n");
}

TEST(JSONOutput, writesNullForWhatIsNotKnown)
{
    EXPECT_EQ(cli::jsonOf(attachments({QJsonObject()})),
              R"([{"content":null,"created":null,"date":null,"id":null,"name":null,"size":0}])"
              "\n");
    EXPECT_EQ(cli::jsonOf(JAIssueObject::Attachments()), "[]\n");
}

TEST(JSONOutput, keepsSizesBeyondThirtyTwoBits)
{
    const auto list = attachments({attachment(u"7"_s, u"a"_s, u""_s, 9'007'199'254'740'993)});
    EXPECT_TRUE(cli::jsonOf(list).contains("\"size\":9007199254740993"));
}

TEST(JSONOutput, writesAUser)
{
    const auto user = JAUser::initWithDictionary({{u"name"_s, u"anna"_s}, {u"displayName"_s, u"Anna Ä"_s}});
    EXPECT_EQ(cli::jsonOf(*user), R"({"avatarUrl":null,"displayName":"Anna Ä","email":null,"key":null,)"
                                  R"("name":"anna","timeZone":null})"
                                  "\n");
}

TEST(JSONOutput, writesASessionWithoutItsValue)
{
    const QJsonObject session = {{u"name"_s, u"JSESSIONID"_s}, {u"value"_s, u"5EC2E7"_s}};
    const QJsonObject info = {{u"loginCount"_s, 3}, {u"previousLoginTime"_s, u"then"_s}};
    const auto record = JALoginObject::initWithDictionary({{u"session"_s, session}, {u"loginInfo"_s, info}});
    EXPECT_EQ(cli::jsonOf(*record, u"https://h/"_s),
              R"({"failedLoginCount":0,"lastFailedLoginTime":null,"loginCount":3,)"
              R"("previousLoginTime":"then","server":"https://h/","valid":true})"
              "\n");
}

} // namespace
