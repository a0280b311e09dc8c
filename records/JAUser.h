#pragma once

#include "platform/foundation/Export.h"
#include "records/JAObject.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>

/// The account whose session it is.
class TL_EXPORT JAUser : public JAObject
{
public:
    /// Reads the answer to a request for the current user.
    static std::shared_ptr<const JAUser> initWithDictionary(const QJsonObject& dictionary);

    /// Address of a picture of 48 by 48 pixels.
    const std::optional<QString>& avatarUrl() const { return m_avatarUrl; }
    ///@{
    /// The server's own texts; names and address are for people, `key` is for the server.
    const std::optional<QString>& displayName() const { return m_displayName; }
    const std::optional<QString>& email() const { return m_email; }
    const std::optional<QString>& key() const { return m_key; }
    const std::optional<QString>& name() const { return m_name; }
    ///@}
    /// By its name, "Europe/Berlin" for instance.
    const std::optional<QString>& timeZone() const { return m_timeZone; }

private:
    explicit JAUser(const QJsonObject& dictionary);

    std::optional<QString> m_avatarUrl;
    std::optional<QString> m_displayName;
    std::optional<QString> m_email;
    std::optional<QString> m_key;
    std::optional<QString> m_name;
    std::optional<QString> m_timeZone;
};
