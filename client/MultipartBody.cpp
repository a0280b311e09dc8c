#include "client/MultipartBody.h"

#include "platform/foundation/values/Format.h"

namespace client {

namespace {

template <typename... Arguments>
QByteArray line(const char16_t* text, const Arguments&... arguments)
{
    return tljira::format(QString::fromUtf16(text), arguments...).toUtf8();
}

} // namespace

tljira::Data multipartBody(const std::optional<tljira::Data>& fileBytes, const std::optional<QString>& fileName,
                           const QString& contentType)
{
    tljira::Data body;
    if (fileBytes) {
        const QByteArray head =
            line(u"--%@\r\n", QString(multipartBoundary)) +
            line(u"Content-Disposition: form-data; name=%@; filename=%@\r\n", QStringLiteral("file"), fileName) +
            line(u"Content-Type: %@\r\n\r\n", contentType);
        body.append(head).append(*fileBytes).append(QByteArray("\r\n"));
    }
    body.append(line(u"--%@--\r\n", QString(multipartBoundary)));
    return body;
}

} // namespace client
