#pragma once

#include "platform/foundation/Export.h"

#include <QJsonValue>
#include <QString>

#include <optional>

/// What the classes with a prefix (JA…, JM…, TL…) stand on, for a host that goes beyond them: requests to servers,
/// errors, windows, and controllers of views that come from interface files.
namespace tljira {

/// Domain of the transport's errors; their codes are those of URLError.
inline constexpr char URLErrorDomain[] = "NSURLErrorDomain";
/// Domain of errors of files and folders; their codes are those of FileError.
inline constexpr char CocoaErrorDomain[] = "NSCocoaErrorDomain";

/// Why something failed, as a value that is handed on. Nothing of this project throws across a public call.
struct TL_EXPORT Error
{
    /// The key of `userInfo` under which an error carries a text of its own.
    static constexpr char localizedDescriptionKey[] = "NSLocalizedDescription";

    /// Whose code it is: URLErrorDomain, CocoaErrorDomain or one of a client (JAController).
    QString domain;
    /// What it means depends on the domain.
    qint64 code = 0;
    /// Whatever the reporter adds: for an answer of a server its decoded JSON, of any type.
    std::optional<QJsonValue> userInfo;

    /// The text under `localizedDescriptionKey` where `userInfo` is an object that has one, otherwise a sentence made
    /// of domain and code.
    QString localizedDescription() const;

    /// Domain, code and user info are all the same.
    bool operator==(const Error& other) const = default;
};

/// One line for the log: domain, code and description.
TL_EXPORT QString describe(const Error& error);

/// An error with a text of its own.
TL_EXPORT Error makeError(const QString& domain, qint64 code, const QString& localizedDescription);

/// Codes of URLErrorDomain.
enum class URLError : qint64 {
    Cancelled = -999,
    BadURL = -1000,
    TimedOut = -1001,
    UnsupportedURL = -1002,
    CannotFindHost = -1003,
    CannotConnectToHost = -1004,
    NetworkConnectionLost = -1005,
    HTTPTooManyRedirects = -1007,
    ResourceUnavailable = -1008,
    NotConnectedToInternet = -1009,
    CannotDecodeContentData = -1016,
    CannotParseResponse = -1017,
    AppTransportSecurityRequiresSecureConnection = -1022,
    DataLengthExceedsMaximum = -1103,
    SecureConnectionFailed = -1200,
    ServerCertificateUntrusted = -1202,
};

/// The transport's error with the platform's text; `host` is named by those texts that name one.
TL_EXPORT Error makeURLError(URLError code, const QString& host = {});

/// Codes of CocoaErrorDomain.
enum class FileError : qint64 {
    NoSuchFile = 4,
    ReadUnknown = 256,
    WriteUnknown = 512,
    WriteNoPermission = 513,
    WriteInvalidFileName = 514,
    WriteFileExists = 516,
    WriteOutOfSpace = 640,
    WriteVolumeReadOnly = 642,
};

/// The error of a file or folder with a text of its own, which names it.
TL_EXPORT Error makeFileError(FileError code, const QString& localizedDescription);

} // namespace tljira
