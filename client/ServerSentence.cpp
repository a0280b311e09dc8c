#include "client/ServerSentence.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

namespace client {

namespace {

void addText(const QJsonValue& value, QStringList& texts)
{
    const QString text = value.toString().trimmed();
    if (!text.isEmpty() && !texts.contains(text))
        texts.append(text);
}

} // namespace

QString serverSentence(const tljira::Error& error)
{
    const QJsonObject answer = error.userInfo.value_or(QJsonValue()).toObject();
    QStringList texts;
    for (const QJsonValue& message : answer.value(QLatin1String("errorMessages")).toArray())
        addText(message, texts);
    for (const QJsonValue& message : answer.value(QLatin1String("errors")).toObject())
        addText(message, texts);
    return texts.join(u' ');
}

} // namespace client
