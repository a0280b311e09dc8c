#include "records/JAAttachmentObject.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/records/Json.h"

#include <QLoggingCategory>
#include <QTimeZone>

namespace {

const QByteArray answer = R"({
    "self": "http://jira.example.test/rest/api/2/attachment/10013", "id": "10013", "filename": "plan.tessaloom",
    "author": {"name": "anna"}, "created": "2017-03-14T10:22:33.123+0100", "size": 2048,
    "mimeType": "application/octet-stream", "content": "http://jira.example.test/secure/attachment/10013/plan.tessaloom"})";

std::shared_ptr<const JAAttachmentObject> attachmentWith(const char* key, const QJsonValue& value)
{
    QJsonObject dictionary = tests::object(answer);
    dictionary[QLatin1String(key)] = value;
    return JAAttachmentObject::initWithDictionary(dictionary);
}

std::optional<QDateTime> dateOf(const char* created)
{
    return attachmentWith("created", QString::fromLatin1(created))->date();
}

QDateTime utc(int hour, int minute, int second, int millisecond)
{
    return QDateTime(QDate(2017, 3, 14), QTime(hour, minute, second, millisecond), QTimeZone::utc());
}

TEST(JAAttachmentObject, readsEveryPropertyFromItsKey)
{
    const auto attachment = JAAttachmentObject::initWithDictionary(tests::object(answer));
    EXPECT_EQ(attachment->downloadLink(),
              QStringLiteral("http://jira.example.test/secure/attachment/10013/plan.tessaloom"));
    EXPECT_EQ(attachment->name(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(attachment->time(), QStringLiteral("2017-03-14T10:22:33.123+0100"));
    EXPECT_EQ(attachment->size(), 2048);
    EXPECT_EQ(attachment->ID(), QStringLiteral("10013"));
    EXPECT_EQ(attachment->date(), utc(9, 22, 33, 123));
}

TEST(JAAttachmentObject, readsSecondsOfOneDigit)
{
    const auto attachment = attachmentWith("created", QStringLiteral("2017-03-14T10:22:7.123+0100"));
    EXPECT_EQ(attachment->date(), utc(9, 22, 7, 123));
    EXPECT_EQ(attachment->time(), QStringLiteral("2017-03-14T10:22:7.123+0100"));
}

TEST(JAAttachmentObject, readsTheDateWhateverZoneTheProcessIsIn)
{
    qputenv("TZ", "Pacific/Apia");
    EXPECT_EQ(dateOf("2017-03-14T10:22:33.123+0100"), utc(9, 22, 33, 123));
    EXPECT_EQ(dateOf("2017-03-14T10:22:33.123-0730"), utc(17, 52, 33, 123));
    EXPECT_EQ(dateOf("2017-03-14T10:22:33.123+0000"), utc(10, 22, 33, 123));
}

TEST(JAAttachmentObject, keepsTheTextOfATimeThatIsNoDate)
{
    for (const char* text : {"yesterday", "", "2017-03-14", "2017-02-30T10:22:33.123+0100",
                             "2017-13-14T10:22:33.123+0100", "2017-03-14T25:22:33.123+0100", "2017-03-14T10:22:33.123",
                             "2017-03-14T10:22:33+0100", "2017-03-14T10:22:33.123+0100 or so"}) {
        const auto attachment = attachmentWith("created", QString::fromLatin1(text));
        EXPECT_EQ(attachment->date(), std::nullopt) << text;
        EXPECT_EQ(attachment->time(), QString::fromLatin1(text));
    }
}

TEST(JAAttachmentObject, hasSizesBeyondFourGibibytes)
{
    EXPECT_EQ(attachmentWith("size", qint64(5) << 30)->size(), qint64(5) << 30);
    EXPECT_EQ(attachmentWith("size", 0)->size(), 0);
}

TEST(JAAttachmentObject, keepsANumberAsIdAsItsDigits)
{
    EXPECT_EQ(attachmentWith("id", 10013)->ID(), QStringLiteral("10013"));
}

TEST(JAAttachmentObject, fromAnEmptyDictionaryHasNothing)
{
    const auto attachment = JAAttachmentObject::initWithDictionary({});
    EXPECT_EQ(attachment->downloadLink(), std::nullopt);
    EXPECT_EQ(attachment->name(), std::nullopt);
    EXPECT_EQ(attachment->time(), std::nullopt);
    EXPECT_EQ(attachment->size(), 0);
    EXPECT_EQ(attachment->ID(), std::nullopt);
    EXPECT_EQ(attachment->date(), std::nullopt);
}

TEST(JAAttachmentObject, takesAValueOfAnotherTypeForAbsent)
{
    for (const QJsonValue& value : tests::valuesOfEveryType) {
        EXPECT_EQ(attachmentWith("content", value)->downloadLink().has_value(), value.isString());
        EXPECT_EQ(attachmentWith("filename", value)->name().has_value(), value.isString());
        EXPECT_EQ(attachmentWith("created", value)->time().has_value(), value.isString());
        EXPECT_EQ(attachmentWith("created", value)->date(), std::nullopt);
        EXPECT_EQ(attachmentWith("size", value)->size(), value.isDouble() ? 7 : 0);
        EXPECT_EQ(attachmentWith("id", value)->ID().has_value(), value.isString() || value.isDouble());
    }
}

TEST(JAAttachmentObject, writesTwoLinesToTheLog)
{
    const tests::LogCapture log;
    const auto attachment = JAAttachmentObject::initWithDictionary(tests::object(answer));
    const QString address = QString::number(reinterpret_cast<quintptr>(attachment.get()), 16);
    const QStringList expected = {QStringLiteral("<JAAttachmentObject: 0x%1>").arg(address),
                                  QStringLiteral("2017-03-14T10:22:33.123+0100")};
    EXPECT_EQ(log.lines(), expected);
}

TEST(JAAttachmentObject, writesTwoLinesToTheLogWithoutATimeToo)
{
    const tests::LogCapture log;
    const auto attachment = JAAttachmentObject::initWithDictionary({});
    ASSERT_EQ(log.lines().size(), 2);
    EXPECT_EQ(log.lines().at(1), QStringLiteral("(null)"));
}

TEST(JAAttachmentObject, writesNothingWhenNobodyListens)
{
    const tests::LogCapture log;
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    const auto attachment = JAAttachmentObject::initWithDictionary(tests::object(answer));
    EXPECT_EQ(attachment->size(), 2048);
    EXPECT_EQ(log.lines(), QStringList());
}

} // namespace
