#pragma once

#include <QString>
#include <QStringList>
#include <QtPlugin>

#define TLJiraControllerInterface_iid "org.tljiracontroller.TLJiraControllerInterface/1.0"

/// Both jobs for a host that does not link the framework but loads it as a Qt plug-in, if it is there. This header and
/// Qt are all that such a host is built with; TLJiraControllerLoader finds the plug-in.
///
/// Everything is called on the main thread, of a host with a QApplication. The object belongs to the plug-in and lives
/// as long as the process: a plug-in that was once loaded stays, because transfers may be under way at any time.
class TLJiraControllerInterface
{
public:
    /// What this header describes. Later versions only add calls behind the others.
    static constexpr int version = 1;

    virtual ~TLJiraControllerInterface() = default;

    /// The `version` of the header that the plug-in was built with.
    virtual int interfaceVersion() const = 0;

    /// Opens the window in which the user attaches the file at `path`, as `name`, to an issue, and returns at once.
    /// When the upload ends, well or not, the folder that holds the file is removed with everything in it: hand in a
    /// copy that lies alone in a temporary folder of its own.
    ///
    /// One window at a time: the one before is closed, unless its upload is still under way. Then it is brought
    /// to the front instead, nothing is done with `path`, and the answer is false.
    virtual bool attach(const QString& name, const QString& path) = 0;

    /// Runs the window in which the user fetches a document from an issue, and returns when it is closed: the path of
    /// the document, which the next fetch removes, or a null string if there is none.
    virtual QString fetch() = 0;

    /// For demonstrations and tests: connects elsewhere than addresses say, "HOST:PORT:TO-HOST:TO-PORT" each. Before
    /// the first of the two jobs.
    virtual void setRoutes(const QStringList& routes) = 0;
};

Q_DECLARE_INTERFACE(TLJiraControllerInterface, TLJiraControllerInterface_iid)
