#include "upload/UploadTrouble.h"

#include <QtGlobal>

const char* adviceFor(const tljira::Error& error)
{
    switch (error.code) {
    case 401:
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Log out and in again, then attach the document again.");
    case 403:
        return QT_TRANSLATE_NOOP("JAUploadingWindow",
                                 "Ask whoever runs the server for the right to attach files to this issue.");
    case 404:
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Attach the document again, and check the issue key.");
    case 413:
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "The server does not take a document of this size.");
    default:
        break;
    }
    if (error.domain == QLatin1String(tljira::URLErrorDomain))
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Check the connection, then attach the document again.");
    return QT_TRANSLATE_NOOP("JAUploadingWindow", "Attach the document again, now or later.");
}

const char* adviceToTryAgain(const tljira::Error& error)
{
    switch (error.code) {
    case 401:
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Log out and in again, then press Upload again.");
    case 403:
    case 413:
        return adviceFor(error);
    case 404:
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Check the issue key, then press Upload again.");
    default:
        break;
    }
    if (error.domain == QLatin1String(tljira::URLErrorDomain))
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Check the connection, then press Upload again.");
    const bool isOfFile = error.domain == QLatin1String(tljira::CocoaErrorDomain);
    if (isOfFile && error.code == static_cast<qint64>(tljira::FileError::WriteInvalidFileName))
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Give the document another name, then attach it again.");
    if (isOfFile)
        return QT_TRANSLATE_NOOP("JAUploadingWindow", "Nothing was sent. Press Upload to try again.");
    return QT_TRANSLATE_NOOP("JAUploadingWindow", "Press Upload again, now or later.");
}
