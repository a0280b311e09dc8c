#pragma once

#include <QString>
#include <QtPlugin>

#include <functional>

namespace tljira {

/// What Keyring asks of QtKeychain. That library brings eight others along, D-Bus among them, so all that knows it
/// stands in a file of its own, which is loaded when a keyring is asked for. Main thread only.
class KeyringService
{
public:
    struct Entry
    {
        QString application;
        QString name;
    };

    enum class End {
        Done,
        NotFound, ///< or it is locked
        Locked,
        Unreachable
    };

    struct Answer
    {
        End end = End::Done;
        QString text;   ///< that was read
        QString detail; ///< what the library says of a keyring that cannot be reached
    };

    /// Called once, in a later turn of the event loop.
    using CallBack = std::function<void(const Answer& answer)>;

    virtual ~KeyringService() = default;
    virtual void read(const Entry& entry, const CallBack& callBack) = 0;
    virtual void write(const Entry& entry, const QString& text, const CallBack& callBack) = 0;
    /// A keyring that is locked may say that it has removed the entry, and keep it.
    virtual void remove(const Entry& entry, const CallBack& callBack) = 0;
};

} // namespace tljira

/// Changes with the class: a file of another version is not taken.
#define TLJIRA_KEYRING_SERVICE "tljira.KeyringService/1"
Q_DECLARE_INTERFACE(tljira::KeyringService, TLJIRA_KEYRING_SERVICE)
