#include "client/ServerSentence.h"

#include "tests/kit/Printers.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace {

using client::serverSentence;

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

} // namespace
