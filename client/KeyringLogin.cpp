#include "client/KeyringLogin.h"

#include "constants/JAConstants.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/settings/Keyring.h"
#include "records/SavedLogin.h"

namespace client {

namespace {

using tljira::HTTPCookieStorage;
using tljira::Keyring;

unsigned logins = 0;

/// The entry of the last login that the keyring took.
QString& lastKept()
{
    static auto& text = *new QString;
    return text;
}

/// What an earlier version of the program left in files is of no more use.
void forgetCookiesOnDisk()
{
    HTTPCookieStorage::sharedHTTPCookieStorage()->deleteAllCookies();
}

void takeUp(const records::KeyringEntry& entry, const std::optional<QString>& address)
{
    auto& saved = records::savedLogin();
    const tljira::UserDefaults::Hold inOnePiece(saved);
    records::setSecretsInMemory(entry.secrets);
    saved.setObject(entry.isToken() ? QStringLiteral("token") : QStringLiteral("session"), records::savedInKeyringKey);
    saved.setPlaceOfMembers(address ? QJsonValue(*address) : QJsonValue(QJsonValue::Undefined));
    forgetCookiesOnDisk();
}

} // namespace

bool isLoginInKeyring()
{
    return records::usesKeyring() && records::savedLogin().objectForKey(records::savedInKeyringKey) &&
           records::savedLogin().objectForKey(kJiraURL);
}

bool isLoginUnread()
{
    return isLoginInKeyring() && records::secretsInMemory().isEmpty();
}

void readLogin(const KeyringDone& done)
{
    const QJsonValue server = records::savedLogin().objectForKey(kJiraURL).value_or(QJsonValue());
    Keyring::read([server, done](const auto& text, const auto& error) {
        if (!error) {
            const auto entry = records::KeyringEntry::fromText(*text);
            const bool isOfServer = entry && records::isSameServer(entry->server, server);
            records::setSecretsInMemory(isOfServer ? entry->secrets : QJsonObject());
        }
        // A locked keyring often says that it has found nothing: what this process knows goes on serving its windows.
        done(error);
    });
}

void keepLogin(const QJsonObject& secrets, const std::optional<QString>& address, const KeyringDone& done)
{
    const records::KeyringEntry entry{address.value_or(QString()), secrets};
    ++logins;
    Keyring::write(entry.text(), [entry, address, done](const auto& error) {
        if (!error) {
            lastKept() = entry.text();
            takeUp(entry, address);
        }
        done(error);
    });
}

unsigned loginCount()
{
    return logins;
}

void removeLogin(const KeyringDone& done)
{
    if (!records::savedLogin().objectForKey(records::savedInKeyringKey)) {
        tljira::MainQueue::instance().addOperation([done] { done(std::nullopt); });
        return;
    }
    Keyring::remove([done, before = logins](const auto& error) {
        if (!error && before == logins)
            records::savedLogin().removeObjectForKey(records::savedInKeyringKey);
        done(error);
    });
}

void takeBackLogin(const std::optional<records::KeyringEntry>& former, const KeyringDone& done)
{
    Keyring::read([former, done](const auto& text, const auto& error) {
        if (text == lastKept())
            setKeyringEntry(former, done);
        else
            done(error);
    });
}

void setKeyringEntry(const std::optional<records::KeyringEntry>& entry, const KeyringDone& done)
{
    if (entry)
        Keyring::write(entry->text(), done);
    else
        Keyring::remove(done);
}

const std::shared_ptr<HTTPCookieStorage>& cookieStorage()
{
    if (!records::usesKeyring())
        return HTTPCookieStorage::sharedHTTPCookieStorage();
    // Never destroyed: transfers may still use it while the process ends.
    static const auto& inMemory =
        *new std::shared_ptr<HTTPCookieStorage>(std::make_shared<HTTPCookieStorage>(QString()));
    return inMemory;
}

} // namespace client
