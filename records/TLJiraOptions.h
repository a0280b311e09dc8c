#pragma once

#include "platform/foundation/Export.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
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

    /// Where that lies for later runs which a login brings: the session or the token.
    enum class Secrets {
        Settings, ///< beside the server's address, in the user's settings; cookies in a file
        Keyring   ///< in the desktop's keyring; cookies in memory alone
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

    /// Where the lines of the log go, and what they hold.
    ///
    /// The framework writes its log for those who look for a mistake: what was asked for, what servers answered, and
    /// where files lie. A host that chooses nothing gets it as Qt's category "platform.log", and the lines of a login
    /// hold the password. Chosen with one of the functions below it holds no secrets unless the host asks for them:
    /// passwords, sessions, cookies and what "Authorization" fields say read "***", wherever they stand, in a server's
    /// own words too. A token never stands in a line, whatever is chosen. tljira::setLogEnabled(false) silences all of
    /// them.
    class TL_EXPORT Log
    {
    public:
        /// Is handed each line, without a line end.
        ///
        /// **Threads and order.** It is called on the thread that logs, mostly the main thread, but any other too: one
        /// line at a time, in the order in which they are written. So it needs no lock of its own; but it must not wait
        /// for another thread of the process, which may be waiting to log. To show a line, hand it to the main thread
        /// and return.
        ///
        /// **Re-entrancy.** What the framework would log because of a call that this function makes goes nowhere. The
        /// function may choose other options; those hold from the next line on. When TLJiraOptions::use() returns
        /// anywhere else, the function that was chosen before is not called any more.
        ///
        /// **Exceptions.** What it throws is caught and costs no more than that line; the next line comes as usual.
        ///
        /// It may be called until the last moment of the process, and keeps what it holds until another is chosen.
        using Function = std::function<void(const QString& line)>;

        /// Whether a log that a host has chosen holds passwords, sessions and cookies.
        enum class Secrets {
            Blanked, ///< they read "***"
            Shown    ///< they stand there; tokens do not
        };

        /// On, with secrets: as it is where nothing was chosen.
        Log() = default;
        /// No line is written, whatever rules for the category there are.
        static Log off();
        /// Into the category "platform.log", as Qt's rules for categories say.
        static Log on(Secrets secrets = Secrets::Blanked);
        /// To a function of the host, whatever rules there are, and not into the category. Without a function, off.
        static Log to(const Function& function, Secrets secrets = Secrets::Blanked);

        /// The same place and the same secrets. Functions cannot be compared: what one call of to() has answered is
        /// the same as its copies, and other than what any other call has.
        bool operator==(const Log& other) const = default;

    private:
        friend struct TLJiraOptions;
        enum class Place { Category, Nowhere, Function };
        Log(Place place, Secrets secrets, std::shared_ptr<const Function> function = {});
        void apply() const;

        Place m_place = Place::Category;
        Secrets m_secrets = Secrets::Shown;
        std::shared_ptr<const Function> m_function;
    };

    /// Who may vouch for servers with https.
    struct Authorities
    {
        /// A file of certificates in PEM form, or a folder with such files, whatever their names. Empty for none but
        /// the system's.
        QString place = {};
        /// Whether these take the place of the system's authorities, and of those that the environment names as
        /// SSL_CERT_FILE and SSL_CERT_DIR. Otherwise they count beside them.
        bool replaceSystem = false;

        /// Both are the same.
        bool operator==(const Authorities& other) const = default;
    };

    /// See Address.
    Address address = Address::SchemeAndHost;
    /// With SignIn::Token nobody is sent a cookie, and the token goes to nobody but the server of the login: not to
    /// another scheme, host or port, by a redirect or by a link.
    SignIn signIn = SignIn::Password;
    /// With Secrets::Keyring no file ever has the session, the token or a cookie. A keyring that is locked, that is not
    /// running or that the framework was built without is an error of every login, in words; nothing is kept elsewhere
    /// instead. The main thread's event loop must be one of GLib, as Qt's own is on Linux.
    Secrets secrets = Secrets::Settings;
    /// The attachments that are listed, and that a user may fetch; none of these stands for all attachments. A file
    /// that the windows download gets the (first) extension behind its name: with the default one always, with others
    /// unless it has one of them, and with all attachments never.
    std::vector<DocumentKind> documents = defaultDocuments();
    /// See Log. Holds from the moment when it is chosen.
    Log log = {};

    ///@{
    /// How servers are reached. A client takes these up when it is made: the one that all windows share with the first
    /// window, that of a TLJiraTask with the task. Where a value is no good every request fails with an error that says
    /// which one and why, and nothing is sent.

    /// "HOST:PORT:ADDRESS:PORT" each: who asks for the first pair is connected to the second, while the request itself
    /// goes on naming the first. They come before those of URLSessionConfiguration::setDefaultRoutes(). An IPv6 address
    /// stands in brackets.
    QStringList routes = {};
    /// What requests say of the program, "Weaver/2.1" for instance. Empty for the framework's own words. Line ends and
    /// other control characters are no good.
    QString userAgent = {};
    /// The proxy of all requests: "http://HOST:PORT", "socks5://HOST:PORT", which leaves it to this machine to look up
    /// the names of servers, or "socks5h://HOST:PORT", which leaves that to the proxy. A user and a password stand
    /// before the host as "USER:PASSWORD@", percent-encoded, and are in no log and no error. An empty text stands for
    /// no proxy at all. Nothing stands for those that the environment names as http_proxy, https_proxy and no_proxy;
    /// where something is chosen, these do not count.
    std::optional<QString> proxy = {};
    /// See Authorities. The system's alone, or those of SSL_CERT_FILE and SSL_CERT_DIR in their place, unless chosen.
    Authorities authorities = {};
    ///@}

    /// Chooses these. From any thread.
    static void use(const TLJiraOptions& options);
    /// "tessaloom", with the packet extension "tessaloompacket".
    static std::vector<DocumentKind> defaultDocuments();
    /// Those that were chosen, without a point in front of extensions. From any thread.
    static TLJiraOptions inUse();

    /// All choices are the same.
    bool operator==(const TLJiraOptions& other) const = default;
};
