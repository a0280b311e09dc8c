#pragma once

#include "client/tasks/TLJiraDocument.h"
#include "client/tasks/TLJiraResult.h"
#include "platform/foundation/Export.h"

#include <QFlags>

#include <functional>
#include <optional>

class QObject;

/// Both jobs, each as one call (TLJiraTask does them without windows):
///
///     TLJiraJobs::attach({name, bytes}, editor, [](const TLJiraJobs::Result& result) { … });
///     TLJiraJobs::fetch(editor, [](const TLJiraJobs::Result& result) { … });
///
/// A window does the rest: login, issue, progress, errors, another attempt. It is a dialog of the window that `parent`
/// stands in: a view (QWidget), a window (QWindow, such as one of QML), or an object below one of them. Without a
/// parent, and while its window is not on screen, it is a dialog of the window that is active then.
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
    /// What is attached. A writer is asked at each press of Upload; what it has against that the window tells. So it
    /// does of a name that is blank or has control characters, line ends among them: nothing is sent under it.
    using Document = TLJiraDocument;

    /// How a job ended.
    using Outcome = TLJiraResult::Outcome;
    /// What came of it. Of several attempts in one window the last counts, unless an earlier one went well: then the
    /// last of those.
    using Result = TLJiraResult;

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
    static bool attach(const Document& document, QObject* parent, const Ended& ended = {}, Options options = NoOptions);

    /// Opens the window in which the user fetches a document from an issue, and returns at once. Bytes that are not as
    /// many as the issue says are not the document: such a job has failed, whatever the window showed.
    static bool fetch(QObject* parent, const Ended& ended, Options options = NoOptions);

    /// The same, but runs the window modally and returns when the job has ended. Nothing where the window of an earlier
    /// call came to the front instead.
    static std::optional<Result> fetchAndWait(QObject* parent, Options options = NoOptions);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TLJiraJobs::Options)
