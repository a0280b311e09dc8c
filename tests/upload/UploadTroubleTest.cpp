#include "upload/UploadTrouble.h"

#include "tests/kit/Printers.h"

#include <QStringList>

#include <gmock/gmock.h>

namespace {

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
