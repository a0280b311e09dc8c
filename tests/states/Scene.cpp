#include "tests/states/Scene.h"

#include "records/TLJiraOptions.h"
#include "tests/kit/WaitUntil.h"
#include "tests/states/InSight.h"

#include <QApplication>

#include <ostream>
#include <utility>

namespace tests {

using standin::Fault;
using standin::Match;
using standin::Point;

Scene::Scene(Hands& hands, standin::Server& server, std::function<void()> logIn)
    : m_hands(hands)
    , m_server(server)
    , m_logIn(std::move(logIn))
{
    m_server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
    m_server.addAttachment("ABC-1", {.fileName = "other.tessaloom", .bytes = "another"});
    m_server.addIssue("ABC-2");
}

Scene::~Scene()
{
    TLJiraOptions::use({});
}

void Scene::goTo(QWidget* control)
{
    ASSERT_NE(control, nullptr);
    ASSERT_TRUE(waitUntil([&] { return isInSight(control); })) << control->objectName().toStdString();
    constexpr int mostStops = 30;
    for (int stop = 0; stop < mostStops && !hasKeyboard(control); ++stop)
        m_hands.press(Qt::Key_Tab);
    ASSERT_TRUE(hasKeyboard(control)) << control->objectName().toStdString();
}

void Scene::writeInto(QWidget* field, const QString& text)
{
    // A field that Tab comes to is selected as a whole.
    m_hands.press(Qt::Key_Tab);
    goTo(field);
    m_hands.write(text);
    const auto* line = qobject_cast<QLineEdit*>(field);
    ASSERT_TRUE(waitUntil([&] { return line->text() == text; }))
        << line->text().toStdString() << " instead of " << text.toStdString();
}

// The upload window.

void Scene::openUpload()
{
    m_upload = TLJiraUpload::initWithName(LoneDocument::name(), m_document.path());
    m_upload->showWindow();
    m_window = m_upload->window();
}

void Scene::checkedSession()
{
    m_logIn();
    m_server.misbehave(Match::on("GET", "*/auth/1/session"), Fault().hold(Point::responseHead(0)));
    openUpload();
    ASSERT_TRUE(waitUntil([this] { return m_server.heldCount() == 1; }));
    ASSERT_TRUE(waitUntil([this] { return m_window->isKeyWindow(); }));
}

void Scene::loginForm()
{
    openUpload();
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(m_upload->jaLoginWindow()->hostTextField()); }));
}

void Scene::fillIn(JALoginWindow& form, const char* password)
{
    writeInto(form.hostTextField(), QStringLiteral("http://jira.example.test/"));
    writeInto(form.emailTextField(), QStringLiteral("anna"));
    writeInto(form.passwordTextField(), QString::fromLatin1(password));
}

void Scene::loginUnderWay()
{
    loginForm();
    m_server.misbehave(Match::on("POST", "*/auth/1/session"), Fault().hold(Point::responseHead(0)));
    fillIn(*m_upload->jaLoginWindow(), "secret");
    m_hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return m_server.heldCount() == 1; }));
}

void Scene::loginRefused()
{
    loginForm();
    const auto form = m_upload->jaLoginWindow();
    fillIn(*form, "wrong");
    m_hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return isInSight(form->errorLabel()) && !form->errorLabel()->text().isEmpty(); }));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(form->passwordTextField()); }));
}

void Scene::tokenForm()
{
    TLJiraOptions::use({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
    loginForm();
}

void Scene::tokenRefused()
{
    tokenForm();
    const auto form = m_upload->jaLoginWindow();
    m_server.misbehave(Match::on("*/myself"), Fault().status(403, "{}", "application/json"));
    writeInto(form->hostTextField(), QStringLiteral("http://jira.example.test/"));
    writeInto(form->passwordTextField(), QStringLiteral("token"));
    m_hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return isInSight(form->errorLabel()) && !form->errorLabel()->text().isEmpty(); }));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(form->passwordTextField()); }));
}

void Scene::uploadPanel()
{
    m_logIn();
    openUpload();
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(m_upload->bodyViewController()->taskTextField()); }));
}

void Scene::uploading()
{
    m_server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(1 << 20)));
    uploadPanel();
    askFor("ABC-1");
    ASSERT_TRUE(waitUntil([this] { return m_server.heldCount() == 1; }));
}

void Scene::uploadDone()
{
    uploadPanel();
    askFor("ABC-1");
    const auto sheet = m_upload->bodyViewController()->jaUploadingWindow();
    ASSERT_TRUE(waitUntil([&] { return sheet->sizeLabel()->text() == QStringLiteral("DONE"); }));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(sheet->cancelButton()); }));
}

void Scene::uploadFailed()
{
    m_server.allowAttachments(false);
    uploadPanel();
    askFor("ABC-1");
    const auto sheet = m_upload->bodyViewController()->jaUploadingWindow();
    ASSERT_TRUE(waitUntil([&] { return isInSight(sheet->errorView()) && hasKeyboard(sheet->cancelButton()); }));
}

void Scene::uploadPanelWithoutDocument()
{
    uploadFailed();
    m_hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(m_upload->bodyViewController()->taskTextField()); }));
}

// The download window.

void Scene::openDownload()
{
    m_download = JMWindowController::init();
    m_download->showWindow();
    m_window = m_download->window();
}

void Scene::downloadLoginForm()
{
    openDownload();
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(m_download->jaLoginWindow()->hostTextField()); }));
}

void Scene::downloadPanel()
{
    m_logIn();
    openDownload();
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(m_download->bodyViewController()->issueKeyTextField()); }));
}

void Scene::askFor(const char* key)
{
    m_hands.write(QString::fromLatin1(key));
    m_hands.press(Qt::Key_Return);
}

void Scene::lookUpUnderWay()
{
    downloadPanel();
    m_server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
    askFor("ABC-1");
    ASSERT_TRUE(waitUntil([this] { return m_server.heldCount() == 1; }));
}

JAListAttachedFilesWindow& Scene::listWindow() const
{
    return *m_download->bodyViewController()->jaListAttachedWindow();
}

bool Scene::isListUp(const JAListAttachedFilesWindow& list) const
{
    const auto* cell = qobject_cast<const JAAttachedCell*>(list.tableView()->cellAtRow(0));
    return isInSight(list.wrapperTableView()) && cell && isInSight(cell);
}

void Scene::list()
{
    downloadPanel();
    askFor("ABC-1");
    ASSERT_TRUE(waitUntil([this] { return isListUp(listWindow()); }));
    drainMainQueue();
}

void Scene::emptyList()
{
    downloadPanel();
    askFor("ABC-2");
    ASSERT_TRUE(waitUntil([this] { return isInSight(listWindow().noDataView()); }));
    drainMainQueue();
}

void Scene::pressDownload()
{
    list();
    if (testing::Test::HasFatalFailure())
        return;
    goTo(qobject_cast<JAAttachedCell*>(listWindow().tableView()->cellAtRow(0))->downloadButton());
    m_hands.press(Qt::Key_Return);
}

void Scene::downloading()
{
    m_server.misbehave(Match::on("*/secure/attachment/*"), Fault().hold(Point::responseBody(3)));
    pressDownload();
    ASSERT_TRUE(waitUntil([this] { return m_server.heldCount() == 1; }));
    ASSERT_TRUE(waitUntil([this] { return isInSight(listWindow().downloadView()); }));
}

void Scene::downloadDone()
{
    pressDownload();
    ASSERT_TRUE(waitUntil([this] { return listWindow().isDone(); }));
    drainMainQueue();
}

void Scene::downloadFailed()
{
    m_server.misbehave(Match::on("*/secure/attachment/*"), Fault().reset(Point::responseBody(3)));
    pressDownload();
    ASSERT_TRUE(waitUntil([this] { return !listWindow().downloadError()->text().isEmpty(); }));
    drainMainQueue();
}

// The older window.

void Scene::olderWindow()
{
    m_older = JAWindowController::init();
    m_older->showWindow();
    m_window = m_older->window();
    ASSERT_TRUE(waitUntil([this] { return m_window->isKeyWindow(); }));
}

void Scene::olderLoginSheet()
{
    olderWindow();
    goTo(m_older->headViewController()->view()->findChild<QPushButton*>(QStringLiteral("loginButton")));
    m_hands.press(Qt::Key_Space);
    const auto form = m_older->headViewController()->jaLoginWindow();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(form->hostTextField()); }));
}

void Scene::olderWindowLoggedIn()
{
    olderLoginSheet();
    fillIn(*m_older->headViewController()->jaLoginWindow(), "secret");
    m_hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return isInSight(m_older->headViewController()->okSessionView()); }));
    drainMainQueue();
}

void Scene::olderList()
{
    olderWindowLoggedIn();
    writeInto(m_older->bodyViewController()->keyDownloadTextField(), QStringLiteral("ABC-1"));
    m_hands.press(Qt::Key_Return);
    const auto list = m_older->bodyViewController()->jaListAttachedWindow();
    ASSERT_TRUE(waitUntil([&] { return isListUp(*list); }));
    drainMainQueue();
}

const std::vector<State>& allStates()
{
    static const std::vector<State> states{
        {"sessionCheck", &Scene::checkedSession},
        {"login", &Scene::loginForm},
        {"loginUnderWay", &Scene::loginUnderWay},
        {"loginRefused", &Scene::loginRefused},
        {"token", &Scene::tokenForm},
        {"tokenRefused", &Scene::tokenRefused},
        {"uploadPanel", &Scene::uploadPanel},
        {"uploading", &Scene::uploading},
        {"uploadDone", &Scene::uploadDone},
        {"uploadFailed", &Scene::uploadFailed},
        {"uploadPanelWithoutDocument", &Scene::uploadPanelWithoutDocument},
        {"downloadLogin", &Scene::downloadLoginForm},
        {"downloadPanel", &Scene::downloadPanel},
        {"lookUpUnderWay", &Scene::lookUpUnderWay},
        {"list", &Scene::list},
        {"emptyList", &Scene::emptyList},
        {"downloading", &Scene::downloading},
        {"downloadDone", &Scene::downloadDone},
        {"downloadFailed", &Scene::downloadFailed},
        {"olderWindow", &Scene::olderWindow},
        {"olderLoginSheet", &Scene::olderLoginSheet},
        {"olderWindowLoggedIn", &Scene::olderWindowLoggedIn},
        {"olderList", &Scene::olderList},
    };
    return states;
}

bool hasList(const State& state)
{
    return state.reach == &Scene::list || state.reach == &Scene::olderList;
}

void PrintTo(const State& state, std::ostream* out)
{
    *out << state.name;
}

} // namespace tests
