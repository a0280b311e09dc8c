#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <QByteArray>
#include <QFlags>
#include <QIODevice>
#include <QString>

#include <functional>
#include <optional>

class QWidget;

/// Both jobs, each as one call:
///
///     TLJiraJobs::attach({name, bytes}, editor, [](const TLJiraJobs::Result& result) { … });
///     TLJiraJobs::fetch(editor, [](const TLJiraJobs::Result& result) { … });
///
/// A window does the rest: login, issue, progress, errors, another attempt. It is a dialog of the window that `parent`
/// stands in, a view of any kind; without a parent, of the window that is active then.
///
/// **One end.** `ended` is called exactly once for each call that answered true, on the main thread, in a later turn of
/// its event loop than the call. That is when the window has gone and nothing is under way any more: what went wrong in
/// a window its user can try again there. When `parent` is destroyed the job ends with it, window and transfer
/// included: a callback that uses the parent holds it in a QPointer, which is null by then. When the application quits,
/// `ended` is called at once, before QApplication::exec() returns, or at the latest when the application object goes.
///
/// **One window of a kind.** A call answers false, and its `ended` is never called, where the window of an earlier one
/// comes to the front instead: one for fetching that is open, or one for attaching that is uploading. A window for
/// attaching that does nothing at the moment makes room for the new document; the job before ends as if its user had
/// closed it.
///
/// Main thread only, of a program with a QApplication and its event loop. Nothing of the host's is changed or removed.
class TL_EXPORT TLJiraJobs
{
public:
    /// What is attached.
    struct Document
    {
        /// Writes the document into a device, which is open for reading and writing, can seek and stays open. Answers
        /// whether that went well. An error of the device, false and an exception have the same effect: the window
        /// tells why there is nothing to send, and nothing is sent. Called on the main thread at each press of Upload.
        using Writer = std::function<bool(QIODevice& device)>;

        /// These bytes.
        Document(const QString& documentName, const QByteArray& documentBytes)
            : name(documentName)
            , bytes(documentBytes)
        {
        }
        /// What `documentWriter` writes.
        Document(const QString& documentName, const Writer& documentWriter)
            : name(documentName)
            , writer(documentWriter)
        {
        }

        /// What the user sees, and the attachment is called.
        QString name;
        /// What is sent where there is no `writer`.
        QByteArray bytes;
        /// Asked anew for each press of Upload. Empty for a document that is `bytes`.
        Writer writer;
    };

    /// How a job ended.
    enum class Outcome {
        Done,      ///< the document is attached, or fetched
        Cancelled, ///< by the user, with the parent or with the application, or nothing was begun
        Failed     ///< see Result::error
    };

    /// What came of a job. Of several attempts in one window the last counts, unless an earlier one went well: then the
    /// last of those.
    struct Result
    {
        /// How it ended.
        Outcome outcome = Outcome::Cancelled;
        /// Whether that is Outcome::Done.
        bool isDone() const { return outcome == Outcome::Done; }

        /// Why it failed; nothing otherwise. Its `localizedDescription()` is a text for the user.
        std::optional<tljira::Error> error;
        /// What the server itself said about that, if it did.
        QString serverSentence;

        /// As the user typed it; empty if nothing was begun.
        QString issueKey;
        ///@{
        /// The attachment, in the server's words. Empty unless done, and where the server does not say.
        QString attachmentId;
        QString attachmentName;
        ///@}
        /// Bytes of the document that was attached or fetched; 0 unless done.
        qint64 size = 0;

        /// Of a document that was fetched: where it lies, under the attachment's own name, alone in a folder made for
        /// it below the private temporary folder. Both are the caller's, who removes them when it likes; no fetch ever
        /// does. Empty unless done, and for a document that was attached.
        QString path;
    };

    /// See above for when it is called. May be empty.
    using Ended = std::function<void(const Result& result)>;

    /// What a host may choose.
    enum Option : unsigned {
        NoOptions = 0,           ///< none of these
        CloseWhenDone = 1,       ///< the window closes by itself a moment after it says "DONE"
        UploadOutlivesWindow = 2 ///< closing the window during an upload hides it; otherwise that cancels the upload
    };
    /// Any of them together.
    Q_DECLARE_FLAGS(Options, Option)

    /// Opens the window in which the user attaches the document to an issue, and returns at once.
    ///
    /// Each press of Upload sends a copy made for it, in a private folder that goes as soon as the copy has been
    /// opened: a corrected key, a retry after a failure and one after a cancel send the same document. What was not
    /// sent is gone with the window; what a killed process left goes with the first call of the next one.
    ///
    /// A window that was hidden during its upload (UploadOutlivesWindow) closes, and the job ends, when the upload
    /// does.
    static bool attach(const Document& document, QWidget* parent, const Ended& ended = {}, Options options = NoOptions);

    /// Opens the window in which the user fetches a document from an issue, and returns at once. Bytes that are not as
    /// many as the issue says are not the document: such a job has failed, whatever the window showed.
    static bool fetch(QWidget* parent, const Ended& ended, Options options = NoOptions);

    /// The same, but runs the window modally and returns when the job has ended. Nothing where the window of an earlier
    /// call came to the front instead.
    static std::optional<Result> fetchAndWait(QWidget* parent, Options options = NoOptions);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TLJiraJobs::Options)
