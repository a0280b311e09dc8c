#include "cli/IssueQuestion.h"

#include "client/IssueKey.h"
#include "constants/JAConstants.h"
#include "platform/foundation/Secrets.h"
#include "platform/foundation/values/Format.h"

namespace cli {

namespace {

/// The issue, or in `failure` why there is none.
std::shared_ptr<const JAIssueObject> issueOf(const QByteArray& body, qint64 status, Outcome& failure)
{
    const auto json = JAController::jsonSerialization(body);
    if (status != 200) {
        const auto shown = json ? std::optional(tljira::withoutTokens(*json)) : std::nullopt;
        failure = Outcome::failed(tljira::Error{QLatin1String(JAController::invalidSessionDomain), status, shown});
        return nullptr;
    }
    const QJsonObject object = json.value_or(QJsonValue()).toObject();
    if (!object.value(u"fields").isObject()) {
        failure = Outcome::failed(QStringLiteral("The server’s answer is no issue."));
        return nullptr;
    }
    return JAIssueObject::initWithDictionary(object);
}

} // namespace

void askForIssue(
    JAController& client, const QString& key,
    const std::function<void(const std::shared_ptr<const JAIssueObject>& issue, const Outcome& failure)>& answer)
{
    client.sendGetRequest(client.url(tljira::format(kGetIssue, client::escapedKey(key))),
                          [answer](const auto& body, const auto& error, const auto& response) {
                              Outcome failure;
                              std::shared_ptr<const JAIssueObject> issue;
                              if (error || !body)
                                  failure = Outcome::failed(error);
                              else
                                  issue = issueOf(*body, response ? response->statusCode : 0, failure);
                              answer(issue, failure);
                          });
}

} // namespace cli
