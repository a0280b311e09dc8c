#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "client/SessionRequest.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/values/JSON.h"

using client::jsonRequest;

void JAController::sendGetRequest(const std::optional<QString>& url, const RequestCallBack& callBack)
{
    session()->dataTaskWithRequest(jsonRequest(QStringLiteral("GET"), url), callingBackLater(callBack))->resume();
}

void JAController::sendDeleteRequest(const std::optional<QString>& url, const RequestCallBack& callBack)
{
    session()->dataTaskWithRequest(jsonRequest(QStringLiteral("DELETE"), url), callingBackLater(callBack))->resume();
}

void JAController::sendPostRequest(const std::optional<QString>& url, const std::optional<QJsonObject>& parametres,
                                   const std::optional<HTTPFields>& httpFields, const RequestCallBack& callBack)
{
    tljira::URLRequest request = jsonRequest(QStringLiteral("POST"), url);
    if (httpFields) {
        for (auto field = httpFields->cbegin(); field != httpFields->cend(); ++field)
            request.addValue(field.value(), field.key());
    }
    if (parametres)
        request.HTTPBody = tljira::encodeJSON(*parametres);
    session()->dataTaskWithRequest(request, callingBackLater(callBack))->resume();
}

tljira::URLSessionDataTask::Completion JAController::callingBackLater(const RequestCallBack& callBack)
{
    return [self = shared_from_this(), callBack](const std::optional<tljira::Data>& body,
                                                 const std::optional<tljira::HTTPURLResponse>& response,
                                                 const std::optional<tljira::Error>& error) {
        tljira::MainQueue::instance().addOperation([self, callBack, body, response, error] {
            client::callIfSet(callBack, body ? body->bytes() : std::nullopt, error, response);
        });
    };
}
