#pragma once

#include "client/tasks/TLJiraDocument.h"
#include "client/tasks/TLJiraResult.h"
#include "platform/foundation/Export.h"
#include "records/JAIssueObject.h"
#include "records/JAUser.h"

#include <QString>

#include <functional>
#include <memory>

/// A job without a window, for a host with an interface of its own, or with none:
///
///     TLJiraTask::attach({name, bytes}, key, [](const TLJiraTask::Result& result) { … }, showProgress);
///
/// Each call begins one job and answers an object that stands for it. Any number of them run side by side, beside the
/// windows of TLJiraJobs too.
///
/// **One end.** `ended` is called exactly once for each call, on the main thread, in a later turn of its event loop
/// than the call; nothing is under way any more then, and no progress comes after it. When the application quits,
/// `ended` is called at once, before QCoreApplication::exec() returns, or at the latest when the application object
/// goes. An `ended` that is empty tells nobody.
///
/// **Letting go.** A job goes on when its object is let go, and calls back at its end. A host that goes before that
/// calls `cancel` and sees to it that its callback can be called all the same.
///
/// **Session.** Jobs speak to the server of the last sign-in, by signIn() or in a window, with the session that is
/// saved at the moment when they begin. Where that is no longer good the server refuses them, with status 401 as a
/// rule, which is then the code of the error. A job that has something left to ask when the program is no longer signed
/// in to its server, but to another, fails with that code and asks nobody. A session that lies in the desktop's keyring
/// (TLJiraOptions::Secrets::Keyring) is read by the first job that needs it; a keyring that does not give it is why
/// that job fails.
///
/// Main thread only, of a program with a QCoreApplication and its event loop. Nothing of the host's is changed or
/// removed.
class TL_EXPORT TLJiraTask
{
public:
    /// What is attached.
    using Document = TLJiraDocument;
    /// How a job ended.
    using Outcome = TLJiraResult::Outcome;
    /// What came of it.
    using Result = TLJiraResult;

    /// See above for when it is called.
    using Ended = std::function<void(const Result& result)>;
    /// The same, with who is signed in; null unless done.
    using UserEnded = std::function<void(const Result& result, const std::shared_ptr<const JAUser>& user)>;
    /// The same, with the issue's documents, newest first; none unless done.
    using ListEnded = std::function<void(const Result& result, const JAIssueObject::Attachments& documents)>;
    /// Bytes that were moved so far, and how many there are. What is sent has a little more than the document, for the
    /// form around it. Called on the main thread, at most about 60 times a second and never
    /// inside the call that began the job.
    using Progress = std::function<void(qint64 bytes, qint64 ofBytes)>;

    /// Opens a session on a server, "https://jira.example.com", and saves both for all that follows, windows included.
    /// Until the server has accepted, what was saved before stays in use; no session is shown to another server than
    /// its own. A sign-in that the server has accepted before `cancel` is called is not undone, also while a keyring
    /// (TLJiraOptions::Secrets::Keyring) asks its user whether to take it. With TLJiraOptions::SignIn::Token `password`
    /// is a token; a personal access token goes without a user.
    static std::shared_ptr<TLJiraTask> signIn(const QString& server, const QString& user, const QString& password,
                                              const Ended& ended);

    /// Asks who is signed in. It fails where nobody is.
    static std::shared_ptr<TLJiraTask> askWhoIsSignedIn(const UserEnded& ended);

    /// Attaches the document to an issue. A writer is called once, before this returns. What is sent is a copy in a
    /// private folder, which goes as soon as it has been opened. A name that is blank or has control characters, line
    /// ends among them, is refused.
    static std::shared_ptr<TLJiraTask> attach(const Document& document, const QString& issueKey, const Ended& ended,
                                              const Progress& progress = {});

    /// Lists the issue's documents.
    static std::shared_ptr<TLJiraTask> list(const QString& issueKey, const ListEnded& ended);

    /// Fetches one attachment of an issue, of any name, which its id tells from the others (JAAttachmentObject::ID). It
    /// lies at Result::path when it is complete, and nowhere if it is not. Bytes that are not as many as the issue says
    /// are not the attachment: such a job has failed.
    static std::shared_ptr<TLJiraTask> fetch(const QString& issueKey, const QString& attachmentId, const Ended& ended,
                                             const Progress& progress = {});

    ~TLJiraTask();
    TLJiraTask(const TLJiraTask&) = delete;
    TLJiraTask& operator=(const TLJiraTask&) = delete;

    /// Breaks the job off. It ends with Outcome::Cancelled, unless its end was settled before, and no progress comes
    /// any more. What the server has taken of a document by then it may keep, if that was all of it.
    void cancel();

    /// Its end has been settled; `ended` may be still to come.
    bool isOver() const;

private:
    struct Parts;
    explicit TLJiraTask(std::unique_ptr<Parts> parts);

    const std::unique_ptr<Parts> m_parts;
};
