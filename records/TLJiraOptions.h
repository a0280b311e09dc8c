#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <vector>

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

    /// A kind of document, as the names of attachments tell it.
    struct DocumentKind
    {
        /// What stands behind the last point of a name, in just these letters: "tessaloom" of "plan.tessaloom".
        QString extension;
        /// In place of which a file gets the other one when it is downloaded; empty for none.
        QString packetExtension = {};

        /// Both are the same.
        bool operator==(const DocumentKind& other) const = default;
    };

    /// See Address.
    Address address = Address::SchemeAndHost;
    /// With SignIn::Token nobody is sent a cookie, and the token goes to nobody but the server of the login: not to
    /// another scheme, host or port, by a redirect or by a link.
    SignIn signIn = SignIn::Password;
    /// The attachments that are listed, and that a user may fetch; none of these stands for all attachments. A file
    /// that the windows download gets the (first) extension behind its name: with the default one always, with others
    /// unless it has one of them, and with all attachments never.
    std::vector<DocumentKind> documents = defaultDocuments();

    /// Chooses these. From any thread.
    static void use(const TLJiraOptions& options);
    /// "tessaloom", with the packet extension "tessaloompacket".
    static std::vector<DocumentKind> defaultDocuments();
    /// Those that were chosen, without a point in front of extensions. From any thread.
    static TLJiraOptions inUse();

    /// All choices are the same.
    bool operator==(const TLJiraOptions& other) const = default;
};
