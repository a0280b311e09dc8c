#include "upload/UploadTrouble.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

tljira::Error status(qint64 code)
{
    return {QStringLiteral("(null)"), code, {}};
}

TEST(Advice, dependsOnWhatWentWrong)
{
    EXPECT_STREQ(adviceFor(status(401)), "Log out and in again, then attach the document again.");
    EXPECT_STREQ(adviceFor(status(403)), "Ask whoever runs the server for the right to attach files to this issue.");
    EXPECT_STREQ(adviceFor(status(404)), "Attach the document again, and check the issue key.");
    EXPECT_STREQ(adviceFor(status(413)), "The server does not take a document of this size.");
    EXPECT_STREQ(adviceFor(status(500)), "Attach the document again, now or later.");
    EXPECT_STREQ(adviceFor(tljira::makeURLError(tljira::URLError::CannotConnectToHost)),
                 "Check the connection, then attach the document again.");
}

TEST(Advice, isToPressUploadAgainWhereTheDocumentIsStillThere)
{
    EXPECT_STREQ(adviceToTryAgain(status(401)), "Log out and in again, then press Upload again.");
    EXPECT_STREQ(adviceToTryAgain(status(403)),
                 "Ask whoever runs the server for the right to attach files to this issue.");
    EXPECT_STREQ(adviceToTryAgain(status(404)), "Check the issue key, then press Upload again.");
    EXPECT_STREQ(adviceToTryAgain(status(413)), "The server does not take a document of this size.");
    EXPECT_STREQ(adviceToTryAgain(status(500)), "Press Upload again, now or later.");
    EXPECT_STREQ(adviceToTryAgain(tljira::makeURLError(tljira::URLError::CannotConnectToHost)),
                 "Check the connection, then press Upload again.");
    EXPECT_STREQ(adviceToTryAgain(tljira::makeFileError(tljira::FileError::WriteInvalidFileName, QString())),
                 "Give the document another name, then attach it again.");
    EXPECT_STREQ(adviceToTryAgain(tljira::makeFileError(tljira::FileError::ReadUnknown, QString())),
                 "Nothing was sent. Press Upload to try again.");
}

} // namespace
