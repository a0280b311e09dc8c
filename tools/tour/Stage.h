#pragma once

#include "host/EditorWindow.h"
#include "platform/toolkit/windows/Window.h"
#include "standin/Server.h"
#include "tools/tour/Album.h"
#include "tools/tour/Journal.h"
#include "tools/tour/Step.h"

#include <QTemporaryDir>

class JALoginWindow;
class QPushButton;

namespace tessaloom::tour {

/// Home, settings and temporary folders of the tour's own, so that it neither sees nor changes the user's.
class PrivateFolders
{
public:
    PrivateFolders();

    QString path(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

/// What all parts of the tour share: the server, the program that is looked at, a document of its user.
class Stage
{
public:
    explicit Stage(const QString& albumFolder);

    static constexpr char address[] = "http://jira.example.test";
    static constexpr char user[] = "anna";
    static constexpr char password[] = "correct horse";

    Journal journal;
    Album album;
    PrivateFolders folders;
    standin::Server server;
    EditorWindow editor;

    /// The document as its user saved it.
    QString documentPath() const { return m_documentPath; }
    QString documentName() const;
    const QByteArray& documentBytes() const { return m_documentBytes; }

    /// Chooses an entry of the editor's File menu.
    Step chooseInFileMenu(QString text);

    /// Waits until the condition holds. If it does not within a minute, that is a difference and the end of the tour.
    Step until(QString what, std::function<bool()> condition);

    /// Waits until what was asked of the server, or of the main thread, has been dealt with.
    Step untilQuiet();

    Step picture(QString what, std::shared_ptr<tljira::Window> window);
    Step picture(QString what, QWidget* window);

    /// Fills in the form and sends it off, without waiting for the answer.
    Step sendLogin(std::shared_ptr<JALoginWindow> form, QString secret);

    /// The visible button below `view` that is wired to this action.
    static QPushButton* button(const QWidget* view, const char* action);

private:
    void makeDocument();
    void fillServer();

    QString m_documentPath;
    QByteArray m_documentBytes;
};

} // namespace tessaloom::tour
