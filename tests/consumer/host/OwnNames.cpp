// Globals of a host that happen to have the names of the framework's constants. They are of other types, sizes and
// values, and writable, so that a library that took one of them for its own would not get far.

int kAttachFilePath = 1;
char kAvatarUrl48[] = "the host's own";
double kAvatarUrls = 0.5;
const char* kClearCache = "the host's own";
long kCurrentUserPath[8] = {1, 2, 3, 4, 5, 6, 7, 8};
int kDispayName = 1;
char kEmailAddress[] = "the host's own";
double kFailedLoginCount = 0.5;
const char* kGetIssue = "the host's own";
long kJiraURL[8] = {1, 2, 3, 4, 5, 6, 7, 8};
int kKey = 1;
char kLastFailedLoginTime[] = "the host's own";
double kLoginCount = 0.5;
const char* kLoginInfo = "the host's own";
long kLoginURLPath[8] = {1, 2, 3, 4, 5, 6, 7, 8};
int kName = 1;
char kPrefixDirectory[] = "the host's own";
double kPreviousLoginTime = 0.5;
const char* kSession = "the host's own";
long kSessionName[8] = {1, 2, 3, 4, 5, 6, 7, 8};
int kSessionValue = 1;
char kTimeZone[] = "the host's own";
double kUserPath = 0.5;
