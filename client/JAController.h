#pragma once

#include "client/JAControllerDelegate.h"
#include "platform/foundation/Export.h"
#include "platform/foundation/loading/URLSession.h"
#include "records/JAIssueObject.h"
#include "records/JALoginObject.h"
#include "records/JAUser.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// The client through which everything talks to the Jira server: one for the process, under one session.
///
/// Everything is called on the main thread; `uploadFileInIssue` and `cancelUpload` may be called from any. Every
/// callback and delegate call comes on the main thread, in a later turn of its event loop than the call that asked for
/// it. A callback may be empty. Operations neither queue nor exclude one another.
///
/// Errors are the transport's own (see URLSession) or, where the server answered with another status than the one that
/// means success, of `invalidSessionDomain`, with the status as code and the decoded answer as user info.
class TL_EXPORT JAController : public tljira::URLSessionDelegate, public std::enable_shared_from_this<JAController>
{
public:
    /// Body, transport error and head of an answer. The statuses of errors are answers too.
    using RequestCallBack =
        std::function<void(const std::optional<QByteArray>& body, const std::optional<tljira::Error>& error,
                           const std::optional<tljira::HTTPURLResponse>& response)>;
    ///@{
    /// The record when the server answered with success, null and the error otherwise.
    using LoginCallBack = std::function<void(const std::shared_ptr<const JALoginObject>& session,
                                             const std::optional<tljira::Error>& error)>;
    using UserCallBack =
        std::function<void(const std::shared_ptr<const JAUser>& user, const std::optional<tljira::Error>& error)>;
    using IssueCallBack = std::function<void(const std::shared_ptr<const JAIssueObject>& issue,
                                             const std::optional<tljira::Error>& error)>;
    ///@}
    /// Nothing as error is success.
    using CompletionCallBack = std::function<void(const std::optional<tljira::Error>& error)>;
    /// Bytes of the request's body that were sent so far, and bytes that it has.
    using UploadCallBack = std::function<void(qint64 bytesSent, qint64 bytesExpected)>;
    /// See `downloadFile`.
    using DownloadCallBack =
        std::function<void(qint64 count1, qint64 count2, const std::optional<tljira::Error>& error, bool finished)>;
    /// Values of header fields by their names.
    using HTTPFields = QMap<QString, QString>;

    /// Domain of errors whose code is the status of an answer that is not the wanted one.
    static constexpr char invalidSessionDomain[] = "invalid sessioin";
    /// Domain of the error for an upload's answer that cannot be read; its code is the status.
    static constexpr char fatalErrorDomain[] = "Fatal error";

    /// The client of the process, made at the first call and never destroyed. From any thread.
    static const std::shared_ptr<JAController>& sharedInstance();

    /// A client of its own, with the saved server address. Its requests, uploads and downloads keep it alive until they
    /// have ended and their callbacks have run.
    static std::shared_ptr<JAController> init();

    ~JAController() override;

    /// The session of the last successful login or check; null before. Neither failures nor logging out clear it.
    std::shared_ptr<const JALoginObject> jaSession() const;

    ///@{
    /// A document that the entry controllers hand in; only kept.
    std::optional<QString> pathFile() const;
    void setPathFile(const std::optional<QString>& path);
    ///@}

    ///@{
    /// Kept alive. Whoever is the delegate when something happens is told.
    std::shared_ptr<JAControllerDelegate> delegate() const;
    void setDelegate(const std::shared_ptr<JAControllerDelegate>& delegate);
    ///@}

    ///@{
    /// Where every request runs; must not be null. Its delegate is the client.
    std::shared_ptr<tljira::URLSession> session() const;
    void setSession(const std::shared_ptr<tljira::URLSession>& session);
    ///@}

    ///@{
    /// Who hears of downloads; set by `downloadFile`. See there how long it stays.
    DownloadCallBack downloadCallBack() const;
    void setDownloadCallBack(const DownloadCallBack& callBack);
    ///@}

    ///@{
    /// Who hears of the progress of every upload; set by `uploadFileInIssue` and kept for good.
    UploadCallBack uploadCallBack() const;
    void setUploadCallBack(const UploadCallBack& callBack);
    ///@}

    /// The server's base address, SCHEME://HOST/ whatever else the address that was set has; nothing when none is set.
    /// A part that the address lacks reads "(null)", which no request can reach. Where the host chose
    /// TLJiraOptions::Address::Whole, port and path stand there too.
    std::optional<QString> jiraHost() const;
    /// Only kept; `setHost` saves too.
    void setJiraHost(const std::optional<QString>& host);

    ///@{
    /// Where the next download to arrive is put; set by `downloadFile`.
    std::optional<QString> savePath() const;
    void setSavePath(const std::optional<QString>& path);
    ///@}

    ///@{
    /// The newest upload, running or ended; null before the first.
    std::shared_ptr<tljira::URLSessionDataTask> upladTask() const;
    void setUpladTask(const std::shared_ptr<tljira::URLSessionDataTask>& task);
    ///@}

    ///@{
    /// The newest download, running or ended; null before the first.
    std::shared_ptr<tljira::URLSessionDownloadTask> downloadTask() const;
    void setDownloadTask(const std::shared_ptr<tljira::URLSessionDownloadTask>& task);
    ///@}

    /// Saves the server's address as given, for later runs too, and uses it. Nothing forgets it.
    void setHost(const std::optional<QString>& host);

    /// The address of a path below the base address; nothing when no server is set.
    std::optional<QString> url(const QString& path) const;

    /// The decoded value, of any JSON type; nothing when `data` is absent or no JSON.
    static std::optional<QJsonValue> jsonSerialization(const std::optional<QByteArray>& data);

    ///@{
    /// The three senders take a full address and carry the saved session. They fail in the transport when there is no
    /// address or no server at it. The callback runs once.
    void sendGetRequest(const std::optional<QString>& url, const RequestCallBack& callBack);
    void sendDeleteRequest(const std::optional<QString>& url, const RequestCallBack& callBack);
    ///@}
    /// As above. `parametres` is the JSON body. `httpFields` are added to the header, to the value of a field that is
    /// there already with a ",".
    void sendPostRequest(const std::optional<QString>& url, const std::optional<QJsonObject>& parametres,
                         const std::optional<HTTPFields>& httpFields, const RequestCallBack& callBack);

    /// Opens a session and saves it. When it is accepted the delegate hears so before the callback runs, when it is
    /// refused after it; when no answer comes the delegate hears nothing. The callback runs once.
    ///
    /// Where the host chose TLJiraOptions::SignIn::Token, `password` is the token, blanks around it left out, and with
    /// no user, or an empty one, a personal access token. The server is asked for the current user with it; an answer
    /// of status 200 with a JSON object is a session, which the token that is saved stands for. A token that no server
    /// can have given out is refused without asking.
    ///
    /// Where the host chose TLJiraOptions::Secrets::Keyring, a session or a token that the server has accepted goes
    /// into the keyring first, which may ask the user for as long as it likes. Only then does this end; where the
    /// keyring does not take it the login is refused, and what was saved before stays.
    void login(const std::optional<QString>& user, const std::optional<QString>& password,
               const LoginCallBack& callBack);

    /// Asks whether the saved session is still good. The delegate hears the outcome: before the callback runs when the
    /// session is good or no answer came, after it when the server refused. The callback runs once. With
    /// SignIn::Token it asks for the current user, and without a token for this server nobody: that is refused. With
    /// Secrets::Keyring it first asks the keyring for the session or the token, if there is one for this server: an
    /// earlier run's is in use from then on. A keyring that does not give it is a refusal.
    void updateSession(const LoginCallBack& callBack);

    /// Ends the session: empties the cookie jar, tells the server, and forgets its address before this call returns.
    /// The saved session stays. The delegate hears of the invalid session once, whatever the outcome. Status 204 is
    /// success. Without an answer the callback runs twice: with the transport's error before the delegate hears, and
    /// with an error of code 0 after. With SignIn::Token there is no session to end: the token is forgotten, the server
    /// is told nothing, and all went well. With Secrets::Keyring the session is forgotten too, here and in the keyring;
    /// the callback runs once, when server and keyring have answered, with the keyring's error if there is one.
    void logout(const CompletionCallBack& callBack);

    /// The callback runs once.
    void getCurrentUser(const UserCallBack& callBack);
    /// `key` goes into the address as it is. The callback runs once.
    void getIssueObject(const QString& key, const IssueCallBack& callBack);

    /// Attaches the file at `path` to an issue under the name `name`. The file is streamed from the disk, as it was
    /// when this was called; one that cannot be read goes out as an empty form, and the server decides.
    ///
    /// `callBack` runs once, without an error when the answer is a JSON array; with the transport's error; or, for a
    /// JSON object, with an error whose domain is the text under "error". An answer that is no JSON makes it run twice:
    /// with an error of `fatalErrorDomain`, then without one.
    ///
    /// `updateCallBack` takes the place of `uploadCallBack` and stays there: it also hears of older uploads.
    void uploadFileInIssue(const std::optional<QString>& path, const std::optional<QString>& name,
                           const QString& keyIssue, const CompletionCallBack& callBack,
                           const UploadCallBack& updateCallBack);

    /// Sends `data` as the form field "file". Without data the form is empty. The callback runs once.
    void uploadImageDouble2(const std::optional<QString>& url, const std::optional<QString>& path,
                            const std::optional<QString>& name, const std::optional<tljira::Data>& data,
                            const RequestCallBack& callBack);

    /// Cancels the newest upload; does nothing when there is none or it has ended.
    void cancelUpload();

    /// "application/octet-stream", whatever the path.
    static QString mimeTypeForPath(const std::optional<QString>& path);

    /// Fetches a full address, under the saved session, into the file `savePath`, whose folder must exist. The answer
    /// is taken for the file whatever its status. `callBack` runs with
    ///
    ///     (bytes of this part, bytes so far, nothing, false)  while bytes arrive
    ///     (100, 100, nothing, true)                           once, when all have arrived and before they are at
    ///                                                         `savePath`; it is let go after that call
    ///     (0, 0, error or nothing, false)                     when any request of the client ends before that
    ///
    /// A download that fails ends with the last of these and leaves what was at `savePath`. The callback stays set
    /// then, and the end of each later request calls it again. A file that cannot be put in place only shows in the
    /// log. One download is followed at a time: another one takes over callback and `savePath`.
    void downloadFile(const std::optional<QString>& url, const DownloadCallBack& callBack, const QString& savePath);

    /// Cancels the newest download; does nothing when there is none or it has ended.
    void cancelDownload();

    ///@{
    /// What the session tells of the client's tasks; to be called by nobody else.
    void didSendBodyData(const std::shared_ptr<tljira::URLSessionTask>& task, qint64 bytesSent, qint64 totalBytesSent,
                         qint64 totalBytesExpectedToSend) override;
    void didWriteData(const std::shared_ptr<tljira::URLSessionDownloadTask>& task, qint64 bytesWritten,
                      qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite) override;
    void didFinishDownloadingToURL(const std::shared_ptr<tljira::URLSessionDownloadTask>& task,
                                   const QString& location) override;
    void didResumeAtOffset(const std::shared_ptr<tljira::URLSessionDownloadTask>& task, qint64 fileOffset,
                           qint64 expectedTotalBytes) override;
    void didCompleteWithError(const std::shared_ptr<tljira::URLSessionTask>& task,
                              const std::optional<tljira::Error>& error) override;
    ///@}

private:
    JAController();

    /// The completion of a task that calls back in a turn of the event loop of its own. Keeps the client until then.
    tljira::URLSessionDataTask::Completion callingBackLater(const RequestCallBack& callBack);

    void lookIntoKeyring(const LoginCallBack& callBack, const std::function<void()>& proceed);
    void keepInKeyring(const std::shared_ptr<const JALoginObject>& newSession, const QJsonObject& secrets,
                       const std::optional<QString>& address, const LoginCallBack& callBack);
    void logoutWithKeyring(const std::optional<QString>& sessionURL, const CompletionCallBack& callBack);
    void forgetKeptLogin(const std::optional<QString>& sessionURL, const CompletionCallBack& callBack);

    void checkSession(const LoginCallBack& callBack);
    void loginWithToken(const std::optional<QString>& user, const std::optional<QString>& token,
                        const LoginCallBack& callBack);
    void checkToken(const LoginCallBack& callBack);
    void forgetToken(const CompletionCallBack& callBack);
    void forgetLogin();

    void acceptSession(const QJsonObject& dictionary, const std::optional<QString>& address,
                       const LoginCallBack& callBack);
    void beginSession(const std::shared_ptr<const JALoginObject>& newSession, const LoginCallBack& callBack);
    void refuseSessionLater(const tljira::Error& error, const LoginCallBack& callBack);
    void refuseSession(const std::optional<tljira::Error>& error, const LoginCallBack& callBack);
    void notifyInvalidSession() const;

    struct State;
    const std::unique_ptr<State> m_state;
};
