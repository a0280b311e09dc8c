#pragma once

#include "platform/foundation/Export.h"
#include "records/JAObject.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>

/// A session that the server opened or confirmed, and the one that is saved in the user defaults.
///
/// The saved session outlives logging out: until the next login replaces it, every request goes on to carry it. Not so
/// under TLJiraOptions::SignIn::Token, where requests carry a token instead, nor with TLJiraOptions::Secrets::Keyring,
/// where logging out forgets it.
class TL_EXPORT JALoginObject : public JAObject
{
public:
    /// Reads the answer and saves the session that it names; with TLJiraOptions::Secrets::Keyring it only reads.
    static std::shared_ptr<const JALoginObject> initWithDictionary(const QJsonObject& dictionary);

    ///@{
    /// As the server counts; 0 when it does not say.
    qint64 failedLoginCount() const { return m_failedLoginCount; }
    qint64 loginCount() const { return m_loginCount; }
    ///@}
    ///@{
    /// The server's own text for the time.
    const std::optional<QString>& lastFailedLoginTime() const { return m_lastFailedLoginTime; }
    const std::optional<QString>& previousLoginTime() const { return m_previousLoginTime; }
    ///@}
    ///@{
    /// Name and value of the session's cookie; texts, also where the server sends numbers.
    const std::optional<QString>& sessionName() const { return m_sessionName; }
    const std::optional<QString>& sessionValue() const { return m_sessionValue; }
    ///@}

    /// Makes this the saved session. Without both name and value the saved one stays as it is. With Secrets::Keyring it
    /// is that of this process; a login brings it into the keyring.
    void saveSession() const;

    /// The saved session as the text of a "Cookie" header, NAME=VALUE; absent unless both are saved. From any thread.
    static std::optional<QString> restoreSession();

    /// Forgets the saved session. The client does so by itself only where a token takes its place.
    static void resetSession();

private:
    explicit JALoginObject(const QJsonObject& dictionary);

    qint64 m_failedLoginCount = 0;
    qint64 m_loginCount = 0;
    std::optional<QString> m_lastFailedLoginTime;
    std::optional<QString> m_previousLoginTime;
    std::optional<QString> m_sessionName;
    std::optional<QString> m_sessionValue;
};
