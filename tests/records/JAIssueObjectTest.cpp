#include "records/JAIssueObject.h"
#include "tests/records/Json.h"
#include "tests/kit/Printers.h"

namespace {

QStringList namesIn(const JAIssueObject& issue)
{
    QStringList names;
    for (const auto& attachment : issue.attachments())
        names.append(attachment->name().value_or(QStringLiteral("(none)")));
    return names;
}

std::shared_ptr<const JAIssueObject> issueFrom(const QByteArray& json)
{
    return JAIssueObject::initWithDictionary(tests::object(json));
}

TEST(JAIssueObject, keepsTheAttachmentsInTheOrderOfTheAnswer)
{
    const auto issue = issueFrom(R"({"key": "ABC-1", "fields": {"summary": "s", "attachment": [
        {"filename": "second.txt", "created": "2017-03-14T10:22:33.123+0100"},
        {"filename": "third.tessaloom", "created": "2018-03-14T10:22:33.123+0100"},
        {"filename": "first.tessaloom", "created": "2016-03-14T10:22:33.123+0100"}]}})");
    const QStringList expected = {QStringLiteral("second.txt"), QStringLiteral("third.tessaloom"),
                                  QStringLiteral("first.tessaloom")};
    EXPECT_EQ(namesIn(*issue), expected);
}

TEST(JAIssueObject, withoutAttachmentsHasAnEmptyList)
{
    EXPECT_TRUE(issueFrom(R"({"fields": {"attachment": []}})")->attachments().empty());
    EXPECT_TRUE(issueFrom(R"({"fields": {"summary": "s"}})")->attachments().empty());
    EXPECT_TRUE(issueFrom(R"({"key": "ABC-1"})")->attachments().empty());
    EXPECT_TRUE(JAIssueObject::initWithDictionary({})->attachments().empty());
}

TEST(JAIssueObject, takesFieldsAndAttachmentsOfAnotherTypeForAbsent)
{
    for (const QJsonValue& value : tests::valuesOfEveryType) {
        EXPECT_TRUE(JAIssueObject::initWithDictionary({{QStringLiteral("fields"), value}})->attachments().empty());
        const QJsonObject fields{{QStringLiteral("attachment"), value}};
        EXPECT_TRUE(JAIssueObject::initWithDictionary({{QStringLiteral("fields"), fields}})->attachments().empty());
    }
}

TEST(JAIssueObject, leavesOutElementsThatAreNoObjects)
{
    const auto issue = issueFrom(R"({"fields": {"attachment": [
        null, {"filename": "a"}, 7, "text", [{"filename": "nested"}], true, {}, {"filename": "b"}]}})");
    const QStringList expected = {QStringLiteral("a"), QStringLiteral("(none)"), QStringLiteral("b")};
    EXPECT_EQ(namesIn(*issue), expected);
}

} // namespace
