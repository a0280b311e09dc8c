#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDebug>
#include <QJsonValue>
#include <QString>

#include <ostream>

// How a failing assertion shows Qt's values: as text instead of as bytes.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << '"' << bytes.toStdString() << '"';
}

inline void PrintTo(const QDateTime& date, std::ostream* out)
{
    *out << date.toString(Qt::ISODateWithMs).toStdString();
}

inline void PrintTo(const QJsonValue& value, std::ostream* out)
{
    QString text;
    QDebug(&text).noquote() << value;
    *out << text.toStdString();
}
