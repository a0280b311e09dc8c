#include "records/JAUser.h"
#include "tests/records/Json.h"
#include "tests/kit/Printers.h"

namespace {

const QByteArray answer = R"({
    "self": "http://jira.example.test/rest/api/2/user?username=anna",
    "key": "JIRAUSER10000", "name": "anna", "emailAddress": "anna@example.test",
    "avatarUrls": {"48x48": "http://jira.example.test/secure/useravatar?avatarId=10122",
                   "24x24": "http://jira.example.test/secure/useravatar?size=small&avatarId=10122"},
    "displayName": "Anna Löwe", "active": true, "timeZone": "Europe/Berlin", "locale": "en_US"})";

TEST(JAUser, readsEveryPropertyFromItsKey)
{
    const auto user = JAUser::initWithDictionary(tests::object(answer));
    EXPECT_EQ(user->avatarUrl(), QStringLiteral("http://jira.example.test/secure/useravatar?avatarId=10122"));
    EXPECT_EQ(user->displayName(), QStringLiteral("Anna Löwe"));
    EXPECT_EQ(user->email(), QStringLiteral("anna@example.test"));
    EXPECT_EQ(user->key(), QStringLiteral("JIRAUSER10000"));
    EXPECT_EQ(user->name(), QStringLiteral("anna"));
    EXPECT_EQ(user->timeZone(), QStringLiteral("Europe/Berlin"));
}

TEST(JAUser, withoutThePictureOfItsSizeHasEverythingElse)
{
    QJsonObject dictionary = tests::object(answer);
    dictionary[QStringLiteral("avatarUrls")] = QJsonObject{{QStringLiteral("24x24"), QStringLiteral("http://small")}};
    const auto user = JAUser::initWithDictionary(dictionary);
    EXPECT_EQ(user->avatarUrl(), std::nullopt);
    EXPECT_EQ(user->displayName(), QStringLiteral("Anna Löwe"));
    EXPECT_EQ(user->email(), QStringLiteral("anna@example.test"));
    EXPECT_EQ(user->key(), QStringLiteral("JIRAUSER10000"));
    EXPECT_EQ(user->name(), QStringLiteral("anna"));
    EXPECT_EQ(user->timeZone(), QStringLiteral("Europe/Berlin"));
}

TEST(JAUser, fromAnEmptyDictionaryHasNothing)
{
    const auto user = JAUser::initWithDictionary({});
    EXPECT_EQ(user->avatarUrl(), std::nullopt);
    EXPECT_EQ(user->displayName(), std::nullopt);
    EXPECT_EQ(user->email(), std::nullopt);
    EXPECT_EQ(user->key(), std::nullopt);
    EXPECT_EQ(user->name(), std::nullopt);
    EXPECT_EQ(user->timeZone(), std::nullopt);
}

TEST(JAUser, takesAValueOfAnotherTypeForAbsent)
{
    using Property = const std::optional<QString>& (JAUser::*)() const;
    const std::vector<std::pair<const char*, Property>> properties = {
        {"displayName", &JAUser::displayName},
        {"emailAddress", &JAUser::email},
        {"key", &JAUser::key},
        {"name", &JAUser::name},
        {"timeZone", &JAUser::timeZone},
    };
    for (const auto& [key, property] : properties) {
        for (const QJsonValue& value : tests::valuesOfEveryType) {
            QJsonObject dictionary = tests::object(answer);
            dictionary[QLatin1String(key)] = value;
            const auto user = JAUser::initWithDictionary(dictionary);
            EXPECT_EQ(((*user).*property)(), value.isString() ? std::optional(value.toString()) : std::nullopt) << key;
        }
    }
}

TEST(JAUser, takesAPictureUnderAnyOtherTypeForAbsent)
{
    for (const QJsonValue& value : tests::valuesOfEveryType) {
        const auto withStrangePictures = JAUser::initWithDictionary({{QStringLiteral("avatarUrls"), value}});
        EXPECT_EQ(withStrangePictures->avatarUrl(), std::nullopt);

        const QJsonObject pictures{{QStringLiteral("48x48"), value}};
        const auto withStrangePicture = JAUser::initWithDictionary({{QStringLiteral("avatarUrls"), pictures}});
        EXPECT_EQ(withStrangePicture->avatarUrl().has_value(), value.isString());
    }
}

} // namespace
