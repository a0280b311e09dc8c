#pragma once

#include "standin/Content.h"
#include "standin/Options.h"
#include "standin/Records.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace standin {

/// What one login, accepted or not, leaves behind.
struct LoginHistory
{
    int failedCount = 0;
    int count = 0;
    std::string lastFailed = {}; ///< as in the JSON; empty: never
    std::string previous = {};
};

struct LoginOutcome
{
    enum class Kind { accepted, wrongPassword, captchaRequired };
    Kind kind = Kind::wrongPassword;
    std::string session = {};
    LoginHistory history = {};
};

struct UserState
{
    User user = {};
    LoginHistory history = {};
    std::string lastLogin = {};
    int failuresInARow = 0;
    bool needsCaptcha = false;
};

struct AttachmentState
{
    StoredAttachment record = {};
    ContentPtr content = {}; ///< null: the bytes went down the sink
    Override json = {};
    User author = {};
};

struct IssueState
{
    std::int64_t id = 0;
    Issue issue = {};
    int hiddenStatus = 0;
    std::vector<AttachmentState> attachments = {};
};

/// The users, sessions, issues and attachments of the server. Safe to use from any thread; what it hands out are
/// copies.
class Jira
{
public:
    explicit Jira(const Options& options);

    void addUser(User user);
    void requireCaptcha(const std::string& userName, bool required);
    std::optional<UserState> user(const std::string& name) const;

    LoginOutcome login(const std::string& userName, const std::string& password);
    std::string openSession(const std::string& userName);
    void closeSession(const std::string& session);
    void expireSessions();
    std::size_t sessionCount() const;
    /// The user of the first session that is good.
    std::optional<std::string> userOfSession(const std::vector<std::string>& sessions) const;

    /// Whose e-mail address or, with `needsEmail` off, name goes with this token.
    std::optional<std::string> userOfApiToken(const std::string& name, const std::string& token, bool needsEmail) const;
    std::optional<std::string> userOfAccessToken(const std::string& token) const;
    std::optional<std::string> userOfPassword(const std::string& name, const std::string& password) const;

    void addIssue(Issue issue);
    void hideIssue(const std::string& key, int status);
    /// With its attachments.
    std::optional<IssueState> issue(const std::string& key) const;

    /// 0 when there is no such issue. `record` needs no id.
    std::int64_t addAttachment(AttachmentState attachment);
    void removeAttachment(std::int64_t id);
    std::optional<AttachmentState> attachment(std::int64_t id) const;

    /// A text that stands for an attachment.
    std::string openTicket(std::int64_t id);
    std::optional<AttachmentState> attachmentOfTicket(const std::string& ticket) const;

    void allowAttachments(bool allowed);
    bool allowsAttachments() const;

private:
    std::string makeSession(const std::string& userName);
    std::string randomDigits();

    const Options m_options;
    mutable std::mutex m_mutex;
    std::vector<UserState> m_users;
    std::map<std::string, std::string> m_sessions; ///< to user names
    std::map<std::string, std::int64_t> m_tickets; ///< to attachments
    std::vector<IssueState> m_issues;
    std::int64_t m_nextIssueId = 10000;
    std::int64_t m_nextAttachmentId = 10000;
    bool m_allowsAttachments = true;
    std::random_device m_random;
};

/// Now, as it is written in the JSON.
std::string timeText();

} // namespace standin
