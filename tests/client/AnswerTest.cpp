#include "client/Answer.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using client::Answer;

tljira::HTTPURLResponse responseWith(int status)
{
    tljira::HTTPURLResponse response;
    response.statusCode = status;
    return response;
}

TEST(Answer, ofStatus200IsAccepted)
{
    const Answer answer = Answer::from(QByteArray(R"({"a": 1})"), std::nullopt, responseWith(200));
    EXPECT_EQ(answer.kind, Answer::Kind::Accepted);
    EXPECT_EQ(answer.dictionary(), (QJsonObject{{QStringLiteral("a"), 1}}));
    EXPECT_EQ(answer.error, std::nullopt);
}

TEST(Answer, ofStatus200IsAcceptedWhateverItsBodyIs)
{
    for (const char* body : {"", "<html>", "[1]", "null", "\"text\""}) {
        const Answer answer = Answer::from(QByteArray(body), std::nullopt, responseWith(200));
        EXPECT_EQ(answer.kind, Answer::Kind::Accepted) << body;
        EXPECT_EQ(answer.dictionary(), QJsonObject()) << body;
    }
}

TEST(Answer, ofAnyOtherStatusIsRefused)
{
    for (int status : {100, 201, 202, 204, 302, 401, 403, 404, 429, 500, 503}) {
        const Answer answer = Answer::from(QByteArray(R"({"a": 1})"), std::nullopt, responseWith(status));
        EXPECT_EQ(answer.kind, Answer::Kind::Refused);
        ASSERT_TRUE(answer.error);
        EXPECT_EQ(answer.error->domain, QStringLiteral("invalid sessioin"));
        EXPECT_EQ(answer.error->code, status);
        EXPECT_EQ(answer.error->userInfo, QJsonValue(QJsonObject{{QStringLiteral("a"), 1}}));
    }
}

TEST(Answer, thatIsRefusedWithoutJSONHasNoUserInfo)
{
    const Answer answer = Answer::from(QByteArray("<html>"), std::nullopt, responseWith(403));
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->userInfo, std::nullopt);
}

TEST(Answer, isMissingWhenTheTransportFailed)
{
    const tljira::Error error = tljira::makeURLError(tljira::URLError::TimedOut);
    const Answer answer = Answer::from(QByteArray("{}"), error, responseWith(200));
    EXPECT_EQ(answer.kind, Answer::Kind::Missing);
    EXPECT_EQ(answer.error, error);
}

TEST(Answer, isMissingWithoutAnErrorWhenOnlyItsBodyIs)
{
    const Answer answer = Answer::from(std::nullopt, std::nullopt, responseWith(200));
    EXPECT_EQ(answer.kind, Answer::Kind::Missing);
    EXPECT_EQ(answer.error, std::nullopt);
}

TEST(Answer, hasStatus0WhenThereIsNoResponse)
{
    EXPECT_EQ(client::statusOf(std::nullopt), 0);
    EXPECT_EQ(client::statusOf(responseWith(418)), 418);
}

} // namespace
