#pragma once

#include "platform/foundation/values/Error.h"

#include <curl/curl.h>

#include <optional>

namespace tljira {

/// The proxy that a configuration names. Its credentials are in no error and in no line of the log.
class Proxy
{
public:
    /// See URLSessionConfiguration::proxy.
    explicit Proxy(const std::optional<QString>& address);

    /// What is wrong with the address; nothing if it will do.
    std::optional<Error> problem() const;
    void use(CURL* easy) const;
    /// What the proxy had to do with the end of a request; nothing where it had nothing to do with that.
    std::optional<Error> errorOf(CURLcode code, CURL* easy) const;

private:
    /// Without credentials.
    QString name() const;
    std::optional<Error> errorOfStatus(long status) const;

    const std::optional<QString> m_address;
};

} // namespace tljira
