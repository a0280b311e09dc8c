#pragma once

#include "platform/foundation/values/Error.h"

#include <QString>

#include <optional>

/// What came of a job, with a window or without one: see TLJiraJobs and TLJiraTask.
struct TLJiraResult
{
    /// How a job ended.
    enum class Outcome {
        Done,      ///< it did what it was asked for
        Cancelled, ///< by the user or the host, with the parent or with the application, or nothing was begun
        Failed     ///< see `error`
    };

    /// How it ended.
    Outcome outcome = Outcome::Cancelled;
    /// Whether that is Outcome::Done.
    bool isDone() const { return outcome == Outcome::Done; }

    /// Why it failed; nothing otherwise. Its `localizedDescription()` is a text for the user.
    std::optional<tljira::Error> error;
    /// What the server itself said about that, if it did.
    QString serverSentence;

    /// As the user typed it, or the host said; empty if nothing was begun.
    QString issueKey;
    ///@{
    /// The attachment, in the server's words. Empty unless done, and where the server does not say.
    QString attachmentId;
    QString attachmentName;
    ///@}
    /// Bytes of the document that was attached or fetched; 0 unless done.
    qint64 size = 0;

    /// Of a document that was fetched: where it lies, under the attachment's own name, alone in a folder made for it
    /// below the private temporary folder. Both are the caller's, who removes them when it likes; no fetch ever does.
    /// Empty unless done, and for a document that was attached.
    QString path;
};
