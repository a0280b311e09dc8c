#pragma once

#include "platform/foundation/Export.h"

/// What a host chooses for the whole process, with one call before it makes the first controller or job:
///
///     TLJiraOptions::use({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
///
/// What is left out is as if the host had chosen nothing. A program that chooses otherwise than its earlier version
/// asks its users to log in again.
struct TL_EXPORT TLJiraOptions
{
    /// What of the server's address counts that the user types.
    enum class Address {
        SchemeAndHost, ///< of `https://host:8443/jira` remains `https://host/`
        Whole          ///< port and path too; a user and what follows "?" or "#" never count
    };

    /// What a login needs.
    enum class SignIn {
        Password, ///< a password, which opens a session that a cookie stands for
        Token     ///< an API token with a user's name or e-mail address, or a personal access token without
    };

    /// See Address.
    Address address = Address::SchemeAndHost;
    /// With SignIn::Token nobody is sent a cookie, and the token goes to nobody but the server of the login: not to
    /// another scheme, host or port, by a redirect or by a link.
    SignIn signIn = SignIn::Password;

    /// Chooses these. From any thread.
    static void use(const TLJiraOptions& options);
    /// Those that were chosen. From any thread.
    static TLJiraOptions inUse();

    /// All choices are the same.
    bool operator==(const TLJiraOptions& other) const = default;
};
