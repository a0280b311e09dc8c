#include "client/tasks/IssueTask.h"

#include "client/Answer.h"
#include "client/IssueKey.h"
#include "constants/JAConstants.h"
#include "platform/foundation/values/Format.h"

namespace client {

void IssueTask::start()
{
    if (!lacksKey())
        whenSignedIn([this] { askForIssue(); });
}

void IssueTask::askForIssue()
{
    const auto url = client().url(tljira::format(kGetIssue, escapedKey(issueKey())));
    client().sendGetRequest(url, [weak = weakFrom(this)](const auto& body, const auto& error, const auto& response) {
        const auto self = weak.lock();
        if (self && !self->isOver())
            self->issueAnswered(Answer::from(body, error, response));
    });
}

void IssueTask::issueAnswered(const Answer& answer)
{
    if (answer.kind != Answer::Kind::Accepted)
        fail(answer.error.value_or(tljira::makeURLError(tljira::URLError::CannotParseResponse)));
    else if (!answer.dictionary().value(u"fields").isObject())
        // A page for people to log in must not pass for an issue without attachments.
        failWith(QStringLiteral("The server’s answer is no issue."));
    else
        issueArrived(*JAIssueObject::initWithDictionary(answer.dictionary()));
}

} // namespace client
