#include "standin/Jira.h"

#include <QDateTime>

#include <algorithm>
#include <cstdio>

namespace standin {

namespace {

template <typename States>
auto findUser(States& users, const std::string& name)
{
    return std::find_if(users.begin(), users.end(),
                        [&name](const UserState& state) { return state.user.name == name; });
}

template <typename States>
auto findIssue(States& issues, const std::string& key)
{
    return std::find_if(issues.begin(), issues.end(),
                        [&key](const IssueState& state) { return state.issue.key == key; });
}

} // namespace

Jira::Jira(const Options& options)
    : m_options(options)
{
}

void Jira::addUser(User user)
{
    if (user.displayName.empty())
        user.displayName = user.name;
    if (user.email.empty())
        user.email = user.name + "@example.test";
    const std::lock_guard lock(m_mutex);
    const auto found = findUser(m_users, user.name);
    if (found == m_users.end())
        m_users.push_back({.user = std::move(user)});
    else
        *found = {.user = std::move(user)};
}

void Jira::requireCaptcha(const std::string& userName, bool required)
{
    const std::lock_guard lock(m_mutex);
    const auto found = findUser(m_users, userName);
    if (found == m_users.end())
        return;
    found->needsCaptcha = required;
    found->failuresInARow = 0;
}

std::optional<UserState> Jira::user(const std::string& name) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = findUser(m_users, name);
    return found == m_users.end() ? std::nullopt : std::optional(*found);
}

LoginOutcome Jira::login(const std::string& userName, const std::string& password)
{
    const std::lock_guard lock(m_mutex);
    const auto found = findUser(m_users, userName);
    if (found == m_users.end())
        return {};
    if (found->needsCaptcha)
        return {.kind = LoginOutcome::Kind::captchaRequired};
    auto& history = found->history;
    if (found->user.password != password) {
        history.failedCount += 1;
        history.lastFailed = timeText();
        found->needsCaptcha = ++found->failuresInARow >= m_options.triesBeforeCaptcha;
        return {};
    }
    found->failuresInARow = 0;
    history.count += 1;
    history.previous = std::exchange(found->lastLogin, timeText());
    return {.kind = LoginOutcome::Kind::accepted, .session = makeSession(userName), .history = history};
}

std::string Jira::openSession(const std::string& userName)
{
    const std::lock_guard lock(m_mutex);
    return makeSession(userName);
}

std::string Jira::makeSession(const std::string& userName)
{
    const std::string session = randomDigits();
    m_sessions[session] = userName;
    return session;
}

std::string Jira::randomDigits()
{
    std::string text;
    for (int word = 0; word < 4; ++word) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%08X", static_cast<unsigned int>(m_random()));
        text += digits;
    }
    return text;
}

void Jira::closeSession(const std::string& session)
{
    const std::lock_guard lock(m_mutex);
    m_sessions.erase(session);
}

void Jira::expireSessions()
{
    const std::lock_guard lock(m_mutex);
    m_sessions.clear();
}

std::size_t Jira::sessionCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_sessions.size();
}

std::optional<std::string> Jira::userOfSession(const std::vector<std::string>& sessions) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto& session : sessions) {
        if (const auto found = m_sessions.find(session); found != m_sessions.end())
            return found->second;
    }
    return std::nullopt;
}

std::optional<std::string> Jira::userOfApiToken(const std::string& name, const std::string& token,
                                                bool needsEmail) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto& state : m_users) {
        const bool isNamed = state.user.email == name || (!needsEmail && state.user.name == name);
        if (isNamed && !token.empty() && state.user.apiToken == token)
            return state.user.name;
    }
    return std::nullopt;
}

std::optional<std::string> Jira::userOfAccessToken(const std::string& token) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto& state : m_users) {
        if (!token.empty() && state.user.accessToken == token)
            return state.user.name;
    }
    return std::nullopt;
}

std::optional<std::string> Jira::userOfPassword(const std::string& name, const std::string& password) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = findUser(m_users, name);
    return found != m_users.end() && found->user.password == password ? std::optional(name) : std::nullopt;
}

void Jira::addIssue(Issue issue)
{
    if (issue.summary.empty())
        issue.summary = "Summary of " + issue.key;
    const std::lock_guard lock(m_mutex);
    const auto found = findIssue(m_issues, issue.key);
    IssueState state{.id = m_nextIssueId++, .issue = std::move(issue)};
    if (found == m_issues.end())
        m_issues.push_back(std::move(state));
    else
        *found = std::move(state);
}

void Jira::hideIssue(const std::string& key, int status)
{
    const std::lock_guard lock(m_mutex);
    if (const auto found = findIssue(m_issues, key); found != m_issues.end())
        found->hiddenStatus = status;
}

std::optional<IssueState> Jira::issue(const std::string& key) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = findIssue(m_issues, key);
    return found == m_issues.end() ? std::nullopt : std::optional(*found);
}

std::int64_t Jira::addAttachment(AttachmentState attachment)
{
    const std::lock_guard lock(m_mutex);
    const auto found = findIssue(m_issues, attachment.record.issueKey);
    if (found == m_issues.end())
        return 0;
    if (attachment.record.author.empty() && !m_users.empty())
        attachment.record.author = m_users.front().user.name;
    if (const auto author = findUser(m_users, attachment.record.author); author != m_users.end())
        attachment.author = author->user;
    if (attachment.record.created.empty())
        attachment.record.created = timeText();
    attachment.record.id = m_nextAttachmentId++;
    found->attachments.push_back(std::move(attachment));
    return found->attachments.back().record.id;
}

void Jira::removeAttachment(std::int64_t id)
{
    const std::lock_guard lock(m_mutex);
    for (auto& issue : m_issues)
        std::erase_if(issue.attachments, [id](const AttachmentState& state) { return state.record.id == id; });
}

std::optional<AttachmentState> Jira::attachment(std::int64_t id) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto& issue : m_issues) {
        for (const auto& attachment : issue.attachments) {
            if (attachment.record.id == id)
                return attachment;
        }
    }
    return std::nullopt;
}

std::string Jira::openTicket(std::int64_t id)
{
    const std::lock_guard lock(m_mutex);
    const std::string ticket = randomDigits();
    m_tickets[ticket] = id;
    return ticket;
}

std::optional<AttachmentState> Jira::attachmentOfTicket(const std::string& ticket) const
{
    std::int64_t id = 0;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_tickets.find(ticket);
        if (found == m_tickets.end())
            return std::nullopt;
        id = found->second;
    }
    return attachment(id);
}

void Jira::allowAttachments(bool allowed)
{
    const std::lock_guard lock(m_mutex);
    m_allowsAttachments = allowed;
}

bool Jira::allowsAttachments() const
{
    const std::lock_guard lock(m_mutex);
    return m_allowsAttachments;
}

std::string timeText()
{
    const auto now = QDateTime::currentDateTimeUtc();
    return now.toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz'+0000'")).toStdString();
}

} // namespace standin
