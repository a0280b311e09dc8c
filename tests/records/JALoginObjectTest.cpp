#include "records/JALoginObject.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/kit/Printers.h"
#include "tests/records/Json.h"

namespace {

const QByteArray answer = R"({
    "session": {"name": "JSESSIONID", "value": "12345678901234567890123456789012"},
    "loginInfo": {"failedLoginCount": 10, "loginCount": 127,
                  "lastFailedLoginTime": "2017-03-14T10:22:33.123+0100",
                  "previousLoginTime": "2017-03-13T09:00:00.000+0100"}})";

tljira::UserDefaults& defaults()
{
    return tljira::UserDefaults::standardUserDefaults();
}

std::optional<QString> savedValue()
{
    return defaults().stringForKey(QStringLiteral("kSessionValue"));
}

std::optional<QString> savedName()
{
    return defaults().stringForKey(QStringLiteral("kSessionName"));
}

void save(const char* name, const char* value)
{
    JALoginObject::initWithDictionary(
        {{QStringLiteral("session"), QJsonObject{{QStringLiteral("name"), QString::fromUtf8(name)},
                                                 {QStringLiteral("value"), QString::fromUtf8(value)}}}});
}

TEST(JALoginObject, readsEveryPropertyFromItsKey)
{
    const auto session = JALoginObject::initWithDictionary(tests::object(answer));
    EXPECT_EQ(session->failedLoginCount(), 10);
    EXPECT_EQ(session->loginCount(), 127);
    EXPECT_EQ(session->lastFailedLoginTime(), QStringLiteral("2017-03-14T10:22:33.123+0100"));
    EXPECT_EQ(session->previousLoginTime(), QStringLiteral("2017-03-13T09:00:00.000+0100"));
    EXPECT_EQ(session->sessionName(), QStringLiteral("JSESSIONID"));
    EXPECT_EQ(session->sessionValue(), QStringLiteral("12345678901234567890123456789012"));
}

TEST(JALoginObject, isSavedByBeingBuilt)
{
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
    save("JSESSIONID", "abc");
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=abc"));
    EXPECT_EQ(savedValue(), QStringLiteral("abc"));
    EXPECT_EQ(savedName(), QStringLiteral("JSESSIONID"));
}

TEST(JALoginObject, replacesTheSessionSavedBefore)
{
    save("JSESSIONID", "abc");
    save("studio.crowd.tokenkey", "d=e f");
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("studio.crowd.tokenkey=d=e f"));
}

TEST(JALoginObject, isNotRestoredFromHalfAPair)
{
    defaults().setObject(QStringLiteral("JSESSIONID"), QStringLiteral("kSessionName"));
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
    defaults().removeObjectForKey(QStringLiteral("kSessionName"));
    defaults().setObject(QStringLiteral("abc"), QStringLiteral("kSessionValue"));
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
}

TEST(JALoginObject, isRestoredFromNumbersToo)
{
    defaults().setObject(7, QStringLiteral("kSessionName"));
    defaults().setObject(42, QStringLiteral("kSessionValue"));
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("7=42"));
}

TEST(JALoginObject, withoutASessionKeepsTheOneSavedBefore)
{
    save("JSESSIONID", "abc");
    const auto session = JALoginObject::initWithDictionary(tests::object(R"({"self": "x", "name": "anna"})"));
    EXPECT_EQ(session->sessionName(), std::nullopt);
    EXPECT_EQ(session->sessionValue(), std::nullopt);
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=abc"));
}

TEST(JALoginObject, withHalfAPairKeepsTheOneSavedBefore)
{
    save("JSESSIONID", "abc");
    const auto nameOnly = JALoginObject::initWithDictionary(tests::object(R"({"session": {"name": "N"}})"));
    EXPECT_EQ(nameOnly->sessionName(), QStringLiteral("N"));
    const auto valueOnly = JALoginObject::initWithDictionary(tests::object(R"({"session": {"value": "V"}})"));
    EXPECT_EQ(valueOnly->sessionValue(), QStringLiteral("V"));
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=abc"));
}

TEST(JALoginObject, canBeMadeTheSavedSessionAgain)
{
    const auto session = JALoginObject::initWithDictionary(tests::object(answer));
    save("JSESSIONID", "abc");
    session->saveSession();
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=12345678901234567890123456789012"));
}

TEST(JALoginObject, isForgottenByAReset)
{
    save("JSESSIONID", "abc");
    JALoginObject::resetSession();
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
    EXPECT_EQ(savedValue(), std::nullopt);
    EXPECT_EQ(savedName(), std::nullopt);
}

TEST(JALoginObject, fromAnEmptyDictionaryHasNothing)
{
    const auto session = JALoginObject::initWithDictionary({});
    EXPECT_EQ(session->failedLoginCount(), 0);
    EXPECT_EQ(session->loginCount(), 0);
    EXPECT_EQ(session->lastFailedLoginTime(), std::nullopt);
    EXPECT_EQ(session->previousLoginTime(), std::nullopt);
    EXPECT_EQ(session->sessionName(), std::nullopt);
    EXPECT_EQ(session->sessionValue(), std::nullopt);
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
}

TEST(JALoginObject, takesObjectsOfAnotherTypeForAbsent)
{
    save("JSESSIONID", "abc");
    for (const QJsonValue& value : tests::valuesOfEveryType) {
        const auto session = JALoginObject::initWithDictionary(
            {{QStringLiteral("session"), value}, {QStringLiteral("loginInfo"), value}});
        EXPECT_EQ(session->loginCount(), 0);
        EXPECT_EQ(session->lastFailedLoginTime(), std::nullopt);
        EXPECT_EQ(session->sessionName(), std::nullopt);
    }
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=abc"));
}

TEST(JALoginObject, takesValuesOfAnotherTypeForAbsentAndNumbersForTheirDigits)
{
    for (const QJsonValue& value : tests::valuesOfEveryType) {
        save("JSESSIONID", "abc");
        const QJsonObject pair{{QStringLiteral("name"), value}, {QStringLiteral("value"), value}};
        const QJsonObject info{{QStringLiteral("failedLoginCount"), value},
                               {QStringLiteral("loginCount"), value},
                               {QStringLiteral("lastFailedLoginTime"), value},
                               {QStringLiteral("previousLoginTime"), value}};
        const auto session =
            JALoginObject::initWithDictionary({{QStringLiteral("session"), pair}, {QStringLiteral("loginInfo"), info}});
        EXPECT_EQ(session->failedLoginCount(), value.isDouble() ? 7 : 0);
        EXPECT_EQ(session->loginCount(), value.isDouble() ? 7 : 0);
        EXPECT_EQ(session->lastFailedLoginTime().has_value(), value.isString());
        EXPECT_EQ(session->previousLoginTime().has_value(), value.isString());
        const QString expected = value.isString()   ? QStringLiteral("text=text")
                                 : value.isDouble() ? QStringLiteral("7=7")
                                                    : QStringLiteral("JSESSIONID=abc");
        EXPECT_EQ(JALoginObject::restoreSession(), expected);
    }
}

} // namespace
