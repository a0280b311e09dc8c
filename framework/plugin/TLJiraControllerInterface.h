#pragma once

#include <QString>
#include <QStringList>
#include <QtPlugin>

#define TLJiraControllerInterface_iid "org.tljiracontroller.TLJiraControllerInterface/1.0"

/// Both jobs for a host that does not link the framework but loads it as a Qt plug-in, if it is there. This header and
/// Qt are all that such a host is built with; TLJiraControllerLoader finds the plug-in.
///
/// **As an object** (since version 2; QPluginLoader::instance(), TLJiraControllerLoader::object()) the plug-in serves
/// hosts in other languages too, by calls that Qt can make by their names and by a signal:
///
///     int attachBytes(QString name, QByteArray bytes, QObject* parent, QVariantMap options)
///     int attachFile(QString name, QString path, QObject* parent, QVariantMap options)
///     int fetchDocument(QObject* parent, QVariantMap options)
///     signal ended(int job, QVariantMap result)
///
/// and `interfaceVersion`, `setRoutes` and `setLogEnabled` as below. Each of the three opens its window and returns at
/// once, with a number for the job: `ended` comes once for each number, never inside the call. It is 0 where the window
/// of an earlier job has come to the front instead; nothing comes for 0. The window is a dialog of the window that
/// `parent` stands in (a QWidget, a QWindow, one of QML too, or an object below one of them; null for the one that is
/// active), and the job ends with the parent. Nothing of the host's is changed or removed: the file at `path` is read
/// at each press of Upload.
///
/// `options` may hold "closeWhenDone" (the window closes by itself a moment after it says "DONE") and
/// "uploadOutlivesWindow" (closing the window during an upload hides it; otherwise that cancels the upload), each true
/// or false. A job with another option fails at once.
///
/// `result` holds "outcome" ("done", "cancelled" or "failed"), "error" (a text for the user), "errorDomain",
/// "errorCode" and "serverSentence" of what failed, "issueKey", "attachmentId", "attachmentName" and "size" of what was
/// attached or fetched, and the "path" of what was fetched: it lies alone in a folder, and both are the host's. What
/// does not apply is an empty text or 0.
///
/// **Choices** for the whole process, before the first job:
///
///     QString setOptions(QVariantMap options)
///
/// answers an empty text, or what is wrong with them, and then nothing is chosen. What is left out is as if the host
/// had chosen nothing. "address": "schemeAndHost" or "whole". "signIn": "password" or "token". "secrets": "settings" or
/// "keyring". "documents": a list of extensions, each a text or a map of "extension" and "packetExtension"; an empty
/// one stands for all attachments. "log": "on", "off" or "signal", which emits each line as `logged(QString line)`, on
/// the main thread and in their order; with "logSecrets" true its lines hold passwords and sessions, but never a token.
/// "routes": a list, as for `setRoutes`. "userAgent": a text. "proxy": its address, or an empty text for none.
/// "authorities": a file or folder of certificates, with "replaceSystemAuthorities" true in place of the system's.
///
/// **Without windows**, for hosts with an interface of their own:
///
///     int signIn(QString server, QString user, QString password)
///     int askWhoIsSignedIn()
///     int attachBytesTo(QString issueKey, QString name, QByteArray bytes)
///     int attachFileTo(QString issueKey, QString name, QString path)
///     int listDocuments(QString issueKey)
///     int fetchAttachment(QString issueKey, QString attachmentId)
///     bool cancel(int job)
///     signal progress(int job, qint64 bytes, qint64 ofBytes)
///
/// Any number of them run side by side. Each returns at once, with a number for which `ended` comes once. `result`
/// also holds "userName", "displayName" and "email" of who is signed in, or as "documents", newest first, a list of
/// maps with "attachmentId", "attachmentName", "size" and "date". `progress` comes for what is attached or fetched,
/// never after the end. `cancel` breaks a job off, which then ends as "cancelled"; it answers whether there was one
/// that had not ended.
///
/// Everything is called on the main thread, of a host with a QApplication. The object belongs to the plug-in and lives
/// as long as the process: a plug-in that was once loaded stays, because transfers may be under way at any time.
class TLJiraControllerInterface
{
public:
    /// What this header describes. Later versions only add calls behind the others.
    static constexpr int version = 2;

    virtual ~TLJiraControllerInterface() = default;

    /// The `version` of the header that the plug-in was built with.
    virtual int interfaceVersion() const = 0;

    /// Opens the window in which the user attaches the file at `path`, as `name`, to an issue, and returns at once.
    /// Once an upload has been tried, the folder that holds the file is removed with everything in it, as soon as the
    /// window is closed at the latest: hand in a copy that lies alone in a temporary folder of its own, never the
    /// user's file. Where the user sends nothing the copy stays the caller's, who removes it when another call answers
    /// true or the program ends.
    ///
    /// One window at a time: the one before is closed, unless its upload is still under way. Then it is brought
    /// to the front instead, nothing is done with `path`, and the answer is false.
    virtual bool attach(const QString& name, const QString& path) = 0;

    /// Runs the window in which the user fetches a document from an issue, and returns when it is closed: the path of
    /// the document, or a null string if there is none. The file is the caller's. Some plug-ins leave it
    /// where the next fetch of any program of this user removes it: a host that may meet one moves it to a place of its
    /// own at once.
    virtual QString fetch() = 0;

    /// For demonstrations and tests: connects elsewhere than addresses say, "HOST:PORT:TO-HOST:TO-PORT" each. Before
    /// the first of the two jobs.
    virtual void setRoutes(const QStringList& routes) = 0;

    /// Whether the framework writes its log, which it does until told otherwise: the lines of a login hold the
    /// password. Switched off, nothing is written, whatever filter rules and environment variables say; those of the
    /// host are left alone. Since version 2.
    virtual void setLogEnabled(bool enabled) = 0;
};

Q_DECLARE_INTERFACE(TLJiraControllerInterface, TLJiraControllerInterface_iid)
