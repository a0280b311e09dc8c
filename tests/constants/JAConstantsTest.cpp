#include "constants/JAConstants.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>
#include <vector>

namespace {

const std::vector<std::pair<const QString*, const char*>> values = {
    {&kJiraURL, "jiraUrl"},
    {&kLoginURLPath, "rest/auth/1/session"},
    {&kCurrentUserPath, "rest/api/2/myself"},
    {&kGetIssue, "rest/api/2/issue/%@"},
    {&kAttachFilePath, "rest/api/2/issue/%@/attachments"},
    {&kUserPath, "rest/auth/1/user"},
    {&kSession, "session"},
    {&kSessionName, "name"},
    {&kSessionValue, "value"},
    {&kLoginInfo, "loginInfo"},
    {&kFailedLoginCount, "failedLoginCount"},
    {&kLoginCount, "loginCount"},
    {&kLastFailedLoginTime, "lastFailedLoginTime"},
    {&kPreviousLoginTime, "previousLoginTime"},
    {&kAvatarUrls, "avatarUrls"},
    {&kAvatarUrl48, "48x48"},
    {&kDispayName, "displayName"},
    {&kEmailAddress, "emailAddress"},
    {&kKey, "key"},
    {&kName, "name"},
    {&kTimeZone, "timeZone"},
    {&kClearCache, "kClearCach0"},
    {&kPrefixDirectory, "com.tessalooom.JAController"},
};

TEST(JAConstants, haveTheValuesThatServersAndSavedDefaultsKnow)
{
    for (const auto& [constant, value] : values)
        EXPECT_EQ(*constant, QString::fromLatin1(value));
}

TEST(JAConstants, areTwentyThreeDistinctObjects)
{
    std::set<const QString*> distinct;
    for (const auto& [constant, value] : values)
        distinct.insert(constant);
    EXPECT_EQ(distinct.size(), 23u);
}

} // namespace
