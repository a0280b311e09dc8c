#pragma once

#include "platform/foundation/settings/KeyringService.h"

#include <QObject>

namespace tljira {

/// The desktop's keyring through QtKeychain.
class QtKeychainService : public QObject, public KeyringService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJIRA_KEYRING_SERVICE)
    Q_INTERFACES(tljira::KeyringService)

public:
    void read(const Entry& entry, const CallBack& callBack) override;
    void write(const Entry& entry, const QString& text, const CallBack& callBack) override;
    void remove(const Entry& entry, const CallBack& callBack) override;
};

} // namespace tljira
