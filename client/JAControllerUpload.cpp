#include "client/Answer.h"
#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "client/MultipartBody.h"
#include "client/SessionRequest.h"
#include "client/TransferListener.h"
#include "constants/JAConstants.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/Secrets.h"

namespace {

/// Success is any JSON that is no object; one that is tells what went wrong.
void reportUpload(const std::optional<QByteArray>& body, const std::optional<tljira::HTTPURLResponse>& response,
                  const JAController::CompletionCallBack& callBack)
{
    const std::optional<QJsonValue> answer = JAController::jsonSerialization(body);
    const qint64 status = client::statusOf(response);
    if (!answer) {
        // Callers are told twice: the success that follows is part of what they rely on.
        client::callIfSet(callBack, tljira::Error{QString::fromLatin1(JAController::fatalErrorDomain), status, {}});
    }
    if (answer && answer->isObject()) {
        const QJsonValue shown = tljira::withoutTokens(*answer);
        const QJsonObject dictionary = shown.toObject();
        const QString key = QStringLiteral("error");
        const auto reason = dictionary.contains(key) ? std::optional(dictionary.value(key)) : std::nullopt;
        const QString domain = tljira::format(QStringLiteral("%@"), reason);
        client::callIfSet(callBack, tljira::Error{domain, status, shown});
        return;
    }
    client::callIfSet(callBack, std::nullopt);
}

/// Decoded only when somebody listens to the log.
struct TextOfAnswer
{
    const std::optional<QByteArray>& bytes;
};

QString describe(const TextOfAnswer& answer)
{
    return tljira::describe(answer.bytes ? tljira::Data(*answer.bytes).utf8Text() : std::nullopt);
}

std::optional<tljira::Data> contentsOfFile(const std::optional<QString>& path)
{
    return path ? tljira::Data::contentsOfFile(*path) : std::nullopt;
}

tljira::URLRequest uploadRequest(const std::optional<QString>& url, const tljira::Data& body)
{
    tljira::URLRequest request = client::sessionRequest(QStringLiteral("POST"), url);
    request.cachePolicy = tljira::URLRequestCachePolicy::ReloadIgnoringLocalCacheData;
    request.setValue(
        tljira::format(QStringLiteral("multipart/form-data; boundary=%@"), QString(client::multipartBoundary)),
        QStringLiteral("Content-Type"));
    request.setValue(QStringLiteral("nocheck"), QStringLiteral("X-Atlassian-Token"));
    request.HTTPBody = body;
    return request;
}

} // namespace

void JAController::uploadFileInIssue(const std::optional<QString>& path, const std::optional<QString>& name,
                                     const QString& keyIssue, const CompletionCallBack& callBack,
                                     const UploadCallBack& updateCallBack)
{
    setUploadCallBack(updateCallBack);
    tljira::log(u"uploadFileInIssue path file: %@", path);
    uploadImageDouble2(url(tljira::format(kAttachFilePath, keyIssue)), path, name, contentsOfFile(path),
                       [path, callBack](const auto& body, const auto& error, const auto& response) {
                           tljira::log(u" %@ \n%@ \n%@", TextOfAnswer{body}, error, response);
                           client::TransferListener::tell([&](client::TransferListener& listener) {
                               listener.uploadAnswered(path.value_or(QString()), jsonSerialization(body));
                           });
                           if (error)
                               client::callIfSet(callBack, error);
                           else
                               reportUpload(body, response, callBack);
                       });
}

void JAController::uploadImageDouble2(const std::optional<QString>& url, const std::optional<QString>& path,
                                      const std::optional<QString>& name, const std::optional<tljira::Data>& data,
                                      const RequestCallBack& callBack)
{
    const tljira::Data form = client::multipartBody(data, name, mimeTypeForPath(path));
    const auto task = session()->dataTaskWithRequest(
        uploadRequest(url, form),
        [callBackLater = callingBackLater(callBack)](const auto& body, const auto& response, const auto& error) {
            // The line has a place for the text of the request's body, which is always empty.
            tljira::log(u"eq: %@", std::nullopt);
            callBackLater(body, response, error);
        });
    task->resume();
    setUpladTask(task);
}

void JAController::cancelUpload()
{
    if (const auto task = upladTask())
        task->cancel();
}

QString JAController::mimeTypeForPath(const std::optional<QString>&)
{
    return QStringLiteral("application/octet-stream");
}

void JAController::didSendBodyData(const std::shared_ptr<tljira::URLSessionTask>&, qint64, qint64 totalBytesSent,
                                   qint64 totalBytesExpectedToSend)
{
    client::callIfSet(uploadCallBack(), totalBytesSent, totalBytesExpectedToSend);
}
