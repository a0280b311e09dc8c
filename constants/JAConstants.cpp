#include "constants/JAConstants.h"

namespace {

const QString loginURLPath = QStringLiteral("rest/auth/1/session");
const QString currentUserPath = QStringLiteral("rest/api/2/myself");
const QString getIssue = QStringLiteral("rest/api/2/issue/%@");
const QString attachFilePath = QStringLiteral("rest/api/2/issue/%@/attachments");
const QString userPath = QStringLiteral("rest/auth/1/user");

const QString session = QStringLiteral("session");
const QString sessionName = QStringLiteral("name");
const QString sessionValue = QStringLiteral("value");
const QString loginInfo = QStringLiteral("loginInfo");
const QString failedLoginCount = QStringLiteral("failedLoginCount");
const QString loginCount = QStringLiteral("loginCount");
const QString lastFailedLoginTime = QStringLiteral("lastFailedLoginTime");
const QString previousLoginTime = QStringLiteral("previousLoginTime");

const QString avatarUrls = QStringLiteral("avatarUrls");
const QString avatarUrl48 = QStringLiteral("48x48");
const QString dispayName = QStringLiteral("displayName");
const QString emailAddress = QStringLiteral("emailAddress");
const QString key = QStringLiteral("key");
const QString name = QStringLiteral("name");
const QString timeZone = QStringLiteral("timeZone");

const QString jiraURL = QStringLiteral("jiraUrl");
const QString clearCache = QStringLiteral("kClearCach0");

const QString prefixDirectory = QStringLiteral("com.tessalooom.JAController");

} // namespace

constinit const QString& kLoginURLPath = loginURLPath;
constinit const QString& kCurrentUserPath = currentUserPath;
constinit const QString& kGetIssue = getIssue;
constinit const QString& kAttachFilePath = attachFilePath;
constinit const QString& kUserPath = userPath;

constinit const QString& kSession = session;
constinit const QString& kSessionName = sessionName;
constinit const QString& kSessionValue = sessionValue;
constinit const QString& kLoginInfo = loginInfo;
constinit const QString& kFailedLoginCount = failedLoginCount;
constinit const QString& kLoginCount = loginCount;
constinit const QString& kLastFailedLoginTime = lastFailedLoginTime;
constinit const QString& kPreviousLoginTime = previousLoginTime;

constinit const QString& kAvatarUrls = avatarUrls;
constinit const QString& kAvatarUrl48 = avatarUrl48;
constinit const QString& kDispayName = dispayName;
constinit const QString& kEmailAddress = emailAddress;
constinit const QString& kKey = key;
constinit const QString& kName = name;
constinit const QString& kTimeZone = timeZone;

constinit const QString& kJiraURL = jiraURL;
constinit const QString& kClearCache = clearCache;

constinit const QString& kPrefixDirectory = prefixDirectory;
