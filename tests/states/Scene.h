#pragma once

#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/JAWindowController.h"
#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "standin/Server.h"
#include "tests/kit/JiraTest.h"
#include "tests/states/Hands.h"

#include <functional>
#include <memory>
#include <string>

namespace tests {

/// Brings the windows of the framework into each of their states, as a user with a keyboard does. A failure on the way
/// fails the test.
class Scene
{
public:
    ~Scene();
    /// What opens a session is asked for at most once.
    Scene(Hands& hands, standin::Server& server, std::function<void()> logIn);

    ///@{
    /// The upload window.
    void checkedSession();
    void loginForm();
    void loginUnderWay();
    void loginRefused();
    void tokenForm();
    void tokenRefused();
    void uploadPanel();
    void uploading();
    void uploadDone();
    void uploadFailed();
    void uploadPanelWithoutDocument();
    ///@}

    ///@{
    /// The download window.
    void downloadLoginForm();
    void downloadPanel();
    void lookUpUnderWay();
    void list();
    void emptyList();
    void downloading();
    void downloadDone();
    void downloadFailed();
    ///@}

    ///@{
    /// The older window.
    void olderWindow();
    void olderLoginSheet();
    void olderWindowLoggedIn();
    void olderList();
    ///@}

    /// With Tab, as any user of a keyboard goes.
    void goTo(QWidget* control);
    /// Replaces what stands in the fields of the form.
    void fillIn(JALoginWindow& form, const char* password);

    /// The window that is in the state.
    const std::shared_ptr<tljira::Window>& window() const { return m_window; }

    const std::shared_ptr<TLJiraUpload>& upload() const { return m_upload; }
    const std::shared_ptr<JMWindowController>& download() const { return m_download; }
    const std::shared_ptr<JAWindowController>& older() const { return m_older; }

private:
    void openUpload();
    void openDownload();
    void writeInto(QWidget* field, const QString& text);
    void askFor(const char* key);
    void pressDownload();
    bool isListUp(const JAListAttachedFilesWindow& list) const;
    JAListAttachedFilesWindow& listWindow() const;

    Hands& m_hands;
    standin::Server& m_server;
    std::function<void()> m_logIn;
    LoneDocument m_document{QByteArray(4 << 20, 'x')};
    std::shared_ptr<tljira::Window> m_window;
    std::shared_ptr<TLJiraUpload> m_upload;
    std::shared_ptr<JMWindowController> m_download;
    std::shared_ptr<JAWindowController> m_older;
};

/// One state of one window, and how to get there.
struct State
{
    const char* name;
    void (Scene::*reach)();
};

/// All states of all windows.
const std::vector<State>& allStates();

/// Whether documents are listed in it.
bool hasList(const State& state);

/// For the names of tests and the files of pictures.
void PrintTo(const State& state, std::ostream* out);

} // namespace tests
