#include "upload/UploadTrouble.h"

#include "tests/kit/Printers.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace {

tljira::Error answered(const char* json)
{
    return {QStringLiteral("(null)"), 404, QJsonDocument::fromJson(json).object()};
}

TEST(ServerSentence, isWhatStandsUnderErrorMessages)
{
    EXPECT_EQ(serverSentence(answered(R"({"errorMessages":["Issue Does Not Exist"],"errors":{}})")),
              QStringLiteral("Issue Does Not Exist"));
}

TEST(ServerSentence, isWhatStandsUnderErrors)
{
    EXPECT_EQ(serverSentence(answered(R"({"errorMessages":[],"errors":{"file":"It is too large."}})")),
              QStringLiteral("It is too large."));
}

TEST(ServerSentence, isAllOfThemOnce)
{
    EXPECT_EQ(
        serverSentence(answered(R"({"errorMessages":["One.","Two."," One. "],"errors":{"a":"Three.","b":"Two."}})")),
        QStringLiteral("One. Two. Three."));
}

TEST(ServerSentence, isEmptyWhereTheServerSaysNothing)
{
    for (const char* json : {"{}", R"({"errorMessages":"text","errors":["list"]})", R"({"errorMessages":[1,null,{}]})"})
        EXPECT_EQ(serverSentence(answered(json)), QString()) << json;
    EXPECT_EQ(serverSentence(tljira::makeURLError(tljira::URLError::TimedOut)), QString());
    EXPECT_EQ(serverSentence(tljira::Error{}), QString());
}

TEST(Advice, dependsOnWhatWentWrong)
{
    QStringList all;
    for (const int status : {401, 403, 404, 413, 500})
        all.append(QLatin1String(adviceFor(tljira::Error{QStringLiteral("(null)"), status, {}})));
    all.append(QLatin1String(adviceFor(tljira::makeURLError(tljira::URLError::CannotConnectToHost))));
    ASSERT_EQ(all.removeDuplicates(), 0);
    EXPECT_THAT(all[0].toStdString(), testing::HasSubstr("Log out and in again"));
    EXPECT_THAT(all[2].toStdString(), testing::HasSubstr("issue key"));
    EXPECT_THAT(all[5].toStdString(), testing::HasSubstr("connection"));
}

} // namespace
