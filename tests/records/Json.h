#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <gtest/gtest.h>

#include <vector>

namespace tests {

inline QJsonObject object(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << json.toStdString();
    EXPECT_TRUE(document.isObject()) << json.toStdString();
    return document.object();
}

/// A value of every type that JSON has.
inline const std::vector<QJsonValue> valuesOfEveryType = {
    QJsonValue(QJsonValue::Null),       QJsonValue(true),          QJsonValue(7),
    QJsonValue(QStringLiteral("text")), QJsonValue(QJsonArray{1}), QJsonValue(QJsonObject{{QStringLiteral("a"), 1}}),
};

} // namespace tests
