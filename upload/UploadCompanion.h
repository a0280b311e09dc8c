#pragma once

#include "platform/foundation/values/Error.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

class JAUploadBodyViewController;

/// Goes along with the uploads of a panel: it provides the file of each, and hears how each ended. A panel has none
/// unless one joins it. Main thread only, but for what is said to run on another.
class UploadCompanion
{
public:
    /// What an upload sends: a file, or the reason why there is none.
    struct File
    {
        std::optional<QString> path;
        std::optional<tljira::Error> error;
        /// Let go once the file is open; the panel itself removes nothing.
        std::shared_ptr<const void> keeper;
    };
    /// Runs on a thread of its own.
    using Provider = std::function<File()>;

    /// One press of the button, at its end.
    struct Ending
    {
        QString key;
        /// Of the file that was sent; nothing if none was.
        std::optional<QString> path;
        /// The first that was reported. Nothing is success.
        std::optional<tljira::Error> error;
    };

    virtual ~UploadCompanion();

    /// For who wants to see how large the document is before it is sent.
    virtual std::optional<qint64> documentSize() const = 0;
    /// An upload's turn has come; it goes to the issue of this key.
    virtual Provider uploadBegins(const QString& key) = 0;
    /// The panel may begin the next one right after.
    virtual void uploadEnded(const Ending& ending) = 0;

    /// Joins the panel until it goes; uploads that have been asked for keep it.
    static void join(const JAUploadBodyViewController& panel, const std::weak_ptr<UploadCompanion>& companion);
    /// Null for none.
    static std::shared_ptr<UploadCompanion> of(const JAUploadBodyViewController& panel);
};
