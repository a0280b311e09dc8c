#include "platform/foundation/values/Error.h"

#include "tests/kit/Printers.h"

#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

using tljira::Error;
using tljira::makeError;
using tljira::makeURLError;
using tljira::URLError;

TEST(Error, withoutTextOfItsOwnTellsDomainAndCode)
{
    const Error error{QStringLiteral("JADomain"), 401, std::nullopt};
    EXPECT_EQ(error.localizedDescription(),
              QStringLiteral("The operation couldn\u2019t be completed. (JADomain error 401.)"));
}

TEST(Error, userInfoOfOtherKindsGivesNoText)
{
    const QString expected = QStringLiteral("The operation couldn\u2019t be completed. (d error -7.)");
    EXPECT_EQ((Error{QStringLiteral("d"), -7, QJsonValue(QStringLiteral("text"))}).localizedDescription(), expected);
    EXPECT_EQ((Error{QStringLiteral("d"), -7, QJsonObject{{QStringLiteral("other"), 1}}}).localizedDescription(),
              expected);
    const QJsonObject wrongKind{{QStringLiteral("NSLocalizedDescription"), 5}};
    EXPECT_EQ((Error{QStringLiteral("d"), -7, wrongKind}).localizedDescription(), expected);
}

TEST(Error, textOfItsOwnIsItsDescription)
{
    const Error error = makeError(QStringLiteral("d"), 3, QStringLiteral("Kaputt."));
    EXPECT_EQ(error.localizedDescription(), QStringLiteral("Kaputt."));
    EXPECT_EQ(error.userInfo,
              QJsonValue(QJsonObject{{QStringLiteral("NSLocalizedDescription"), QStringLiteral("Kaputt.")}}));
}

TEST(Error, isOneLineInTheLog)
{
    EXPECT_EQ(describe(makeError(QStringLiteral("d"), 3, QStringLiteral("Two\nlines"))),
              QStringLiteral("Error Domain=d Code=3 \"Two\\nlines\""));
}

struct TransportText
{
    URLError code;
    qint64 number;
    const char16_t* text;
};

class TransportErrors : public testing::TestWithParam<TransportText>
{
};

TEST_P(TransportErrors, carryThePlatformsNumbersAndTexts)
{
    const Error error = makeURLError(GetParam().code, QStringLiteral("jira.example.test"));
    EXPECT_EQ(error.domain, QStringLiteral("NSURLErrorDomain"));
    EXPECT_EQ(error.code, GetParam().number);
    EXPECT_EQ(error.localizedDescription(), QString::fromUtf16(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    All, TransportErrors,
    testing::Values(
        TransportText{URLError::Cancelled, -999, u"cancelled"}, TransportText{URLError::BadURL, -1000, u"bad URL"},
        TransportText{URLError::TimedOut, -1001, u"The request timed out."},
        TransportText{URLError::UnsupportedURL, -1002, u"unsupported URL"},
        TransportText{URLError::CannotFindHost, -1003, u"A server with the specified hostname could not be found."},
        TransportText{URLError::CannotConnectToHost, -1004, u"Could not connect to the server."},
        TransportText{URLError::NetworkConnectionLost, -1005, u"The network connection was lost."},
        TransportText{URLError::HTTPTooManyRedirects, -1007, u"too many HTTP redirects"},
        TransportText{URLError::NotConnectedToInternet, -1009, u"The Internet connection appears to be offline."},
        TransportText{URLError::CannotDecodeContentData, -1016, u"cannot decode content data"},
        TransportText{URLError::CannotParseResponse, -1017, u"cannot parse response"},
        TransportText{URLError::AppTransportSecurityRequiresSecureConnection, -1022,
                      u"The server sends this request on from https to http, where others can read it. Nothing was "
                      u"sent there."},
        TransportText{URLError::DataLengthExceedsMaximum, -1103, u"resource exceeds maximum size"},
        TransportText{URLError::SecureConnectionFailed, -1200,
                      u"An SSL error has occurred and a secure connection to the server cannot be made."},
        TransportText{
            URLError::ServerCertificateUntrusted, -1202,
            u"The certificate for this server is invalid. You might be connecting to a server that is pretending to "
            u"be \u201cjira.example.test\u201d which could put your confidential information at risk."}));

} // namespace
