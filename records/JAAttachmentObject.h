#pragma once

#include "platform/foundation/Export.h"
#include "records/JAObject.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>

/// One file that is attached to an issue.
class TL_EXPORT JAAttachmentObject : public JAObject
{
public:
    /// Reads one element of an issue's list of attachments.
    static std::shared_ptr<const JAAttachmentObject> initWithDictionary(const QJsonObject& dictionary);

    /// Address of the file's bytes.
    const std::optional<QString>& downloadLink() const { return m_downloadLink; }
    /// The file's name as its uploader gave it: not fit to be used in a path unchecked.
    const std::optional<QString>& name() const { return m_name; }
    /// The server's own text for the time of the upload.
    const std::optional<QString>& time() const { return m_time; }
    /// Bytes, 0 when the server does not say.
    qint64 size() const { return m_size; }
    /// A text, also where the server sends a number.
    const std::optional<QString>& ID() const { return m_ID; }
    /// `time` as a point in time, in UTC; absent when it is no date.
    const std::optional<QDateTime>& date() const { return m_date; }

private:
    explicit JAAttachmentObject(const QJsonObject& dictionary);

    std::optional<QString> m_downloadLink;
    std::optional<QString> m_name;
    std::optional<QString> m_time;
    qint64 m_size = 0;
    std::optional<QString> m_ID;
    std::optional<QDateTime> m_date;
};

/// @file

/// Class and address, as the log names an object.
TL_EXPORT QString describe(const JAAttachmentObject& attachment);
