#include "constants/JAConstants.h"

const QString kLoginURLPath = QStringLiteral("rest/auth/1/session");
const QString kCurrentUserPath = QStringLiteral("rest/api/2/myself");
const QString kGetIssue = QStringLiteral("rest/api/2/issue/%@");
const QString kAttachFilePath = QStringLiteral("rest/api/2/issue/%@/attachments");
const QString kUserPath = QStringLiteral("rest/auth/1/user");

const QString kSession = QStringLiteral("session");
const QString kSessionName = QStringLiteral("name");
const QString kSessionValue = QStringLiteral("value");
const QString kLoginInfo = QStringLiteral("loginInfo");
const QString kFailedLoginCount = QStringLiteral("failedLoginCount");
const QString kLoginCount = QStringLiteral("loginCount");
const QString kLastFailedLoginTime = QStringLiteral("lastFailedLoginTime");
const QString kPreviousLoginTime = QStringLiteral("previousLoginTime");

const QString kAvatarUrls = QStringLiteral("avatarUrls");
const QString kAvatarUrl48 = QStringLiteral("48x48");
const QString kDispayName = QStringLiteral("displayName");
const QString kEmailAddress = QStringLiteral("emailAddress");
const QString kKey = QStringLiteral("key");
const QString kName = QStringLiteral("name");
const QString kTimeZone = QStringLiteral("timeZone");

const QString kJiraURL = QStringLiteral("jiraUrl");
const QString kClearCache = QStringLiteral("kClearCach0");

const QString kPrefixDirectory = QStringLiteral("com.tessalooom.JAController");
