// In place of QtKeyring.cpp in a build without QtKeychain.

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/settings/Keyring.h"

namespace tljira {

void Keyring::read(const Read& callBack)
{
    MainQueue::instance().addOperation([callBack] { callBack(std::nullopt, makeError(Problem::NotBuiltIn)); });
}

void Keyring::write(const QString&, const Done& callBack)
{
    MainQueue::instance().addOperation([callBack] { callBack(makeError(Problem::NotBuiltIn)); });
}

void Keyring::remove(const Done& callBack)
{
    MainQueue::instance().addOperation([callBack] { callBack(makeError(Problem::NotBuiltIn)); });
}

} // namespace tljira
