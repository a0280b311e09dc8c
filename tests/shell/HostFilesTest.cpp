// What happens when a host brings interface files of its own that lack something.

#include "tests/shell/HostFiles.h"

#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Window.h"
#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/JAWindowController.h"
#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "tests/kit/JiraTest.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimer>

namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

const tljira::Error someError = tljira::makeError(QStringLiteral("test"), 1, QStringLiteral("an error"));

class HostFilesTest : public JiraTest
{
public:
    /// Each line that tells of an interface file, once.
    QStringList complaints() const
    {
        QStringList lines = log.lines().filter(QRegularExpression(QStringLiteral("^interface file ")));
        lines.removeDuplicates();
        return lines;
    }

    /// Through the form as far as it has its fields, and then for certain.
    void logIn(JALoginWindow& form)
    {
        tljira::setText(QPointer(form.hostTextField()), address);
        tljira::setText(QPointer(form.emailTextField()), QStringLiteral("anna"));
        tljira::setText(QPointer(form.passwordTextField()), QStringLiteral("secret"));
        form.loginButtonAction();
        drainMainQueue();
        client->setHost(address);
        bool isIn = false;
        client->login(QStringLiteral("anna"), QStringLiteral("secret"),
                      [&isIn](const auto& session, const auto&) { isIn = session != nullptr; });
        ASSERT_TRUE(waitUntil([&] { return isIn; }));
        drainMainQueue();
    }

    void logOut(JAHeadViewController& header)
    {
        server.forgetRequests();
        header.logOutAction();
        ASSERT_TRUE(waitUntil([this] { return server.finishedRequestCount() > 0; }));
        drainMainQueue();
        header.loginAction();
        drainMainQueue();
        if (header.jaLoginWindow())
            header.jaLoginWindow()->cancelAction();
    }

    static void close(tljira::Window& window)
    {
        EXPECT_TRUE(window.isVisible());
        if (const auto sheet = window.attachedSheet())
            window.endSheet(sheet);
        window.close();
        EXPECT_FALSE(window.isVisible());
        drainMainQueue();
    }

    void walkThroughUpload()
    {
        const LoneDocument document;
        const auto entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
        entry->showWindow();
        logIn(*entry->jaLoginWindow());
        JAUploadBodyViewController& body = *entry->bodyViewController();
        tljira::setText(QPointer(body.taskTextField()), QStringLiteral("ABC-1"));
        body.uploadFileAction();
        ASSERT_TRUE(waitUntil([&] { return !body.taskTextField() || !QFileInfo::exists(document.folder()); }));
        drainMainQueue();
        JAUploadingWindow& sheet = *body.jaUploadingWindow();
        sheet.setErrorState(someError);
        sheet.setSuccessState();
        sheet.cancelAction();
        body.cancelAction();
        logOut(*entry->headViewController());
        close(*entry->window());
    }

    void download(JAListAttachedFilesWindow& list)
    {
        QPushButton* button = nullptr;
        if (list.tableView() && list.tableView()->cellAtRow(0))
            button = list.tableView()->cellAtRow(0)->findChild<QPushButton*>();
        list.downloadAction(button);
        if (!list.attachments().empty()) {
            ASSERT_TRUE(waitUntil([&] { return list.isDone(); }));
        }
        list.updateDownload(1, 2, someError, false);
        list.setAttachments({});
        list.reload();
        list.cancalAction(nullptr);
    }

    void walkThroughDownload()
    {
        server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
        const auto entry = JMWindowController::init();
        entry->showWindow();
        logIn(*entry->jaLoginWindow());
        JADownloadBodyViewController& body = *entry->bodyViewController();
        tljira::setText(QPointer(body.issueKeyTextField()), QStringLiteral("ABC-1"));
        body.getAttachAction();
        JAListAttachedFilesWindow& list = *body.jaListAttachedWindow();
        if (body.issueKeyTextField()) {
            ASSERT_TRUE(waitUntil([&] { return list.window()->isVisible(); }));
        }
        drainMainQueue();
        body.jaInvalidSession();
        body.jaValidSession();
        const bool hasClosedItself = body.issueKeyTextField() != nullptr;
        download(list);
        drainMainQueue();
        if (!hasClosedItself)
            close(*entry->window());
        EXPECT_FALSE(entry->window()->isVisible());
    }

    void walkThroughOlderWindow()
    {
        server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
        const auto entry = JAWindowController::initWithPath(QStringLiteral("/documents/plan"));
        entry->showWindow();
        logIn(*JALoginWindow::init());
        JABodyViewController& body = *entry->bodyViewController();
        tljira::setText(QPointer(body.keyTextField()), QStringLiteral("ABC-1"));
        tljira::setText(QPointer(body.keyDownloadTextField()), QStringLiteral("ABC-1"));
        body.setPathfile(QStringLiteral("/documents/other"));
        body.jaInvalidSession();
        body.jaValidSession();
        body.getListAttachedFilesAction();
        JAListAttachedFilesWindow& list = *body.jaListAttachedWindow();
        if (body.keyDownloadTextField() && entry->bodyView()) {
            ASSERT_TRUE(waitUntil([&] { return list.window()->isVisible(); }));
        }
        download(list);
        body.setDownloadActualView(body.receivingAttachmentsView());
        body.uploadAction();
        logOut(*entry->headViewController());
        close(*entry->window());
    }
};

/// A file of the framework, the controllers that load it, and how a user gets to see it.
struct File
{
    QString path;
    QString owner;
    QStringList sources;
    QString cell;
    void (HostFilesTest::*walk)();

    QString name() const { return QFileInfo(path).fileName(); }
};

/// A file and what is taken out of it.
struct Lack
{
    File file;
    QString outlet;
    QString action;
    QString complaint;
};

QStringList namesIn(const QString& source, const QString& expression)
{
    QFile file(QStringLiteral(SOURCE_DIR "/") + source);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    QStringList names;
    auto found = QRegularExpression(expression).globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext())
        names.append(found.next().captured(1));
    return names;
}

QStringList outletsOf(const QString& source)
{
    return namesIn(source + QStringLiteral(".h"), QStringLiteral("\\{outlets, \"(\\w+)\"\\}"));
}

QStringList actionsOf(const QString& source)
{
    return namesIn(source + QStringLiteral(".cpp"), QStringLiteral("actions\\.bind\\(\"(\\w+)\""));
}

std::vector<File> files()
{
    const auto of = [](const char* folder, const char* name, auto walk) {
        const QString path = QLatin1String(folder) + u'/' + QLatin1String(name);
        return File{path, QLatin1String(name), {path}, {}, walk};
    };
    File shared = of("shell", "JMWindowController", &HostFilesTest::walkThroughUpload);
    shared.owner = QStringLiteral("TLJiraUpload");
    shared.sources = {QStringLiteral("shell/SessionWindowController")};
    const File list = of("download", "JAListAttachedFilesWindow", &HostFilesTest::walkThroughDownload);
    File cell = list;
    cell.sources = {QStringLiteral("download/JAAttachedCell")};
    cell.cell = QStringLiteral("jaAttachedCell");
    return {shared,
            of("shell", "JALoginWindow", &HostFilesTest::walkThroughUpload),
            of("shell", "JAHeadViewController", &HostFilesTest::walkThroughUpload),
            of("upload", "JAUploadBodyViewController", &HostFilesTest::walkThroughUpload),
            of("upload", "JAUploadingWindow", &HostFilesTest::walkThroughUpload),
            of("download", "JADownloadBodyViewController", &HostFilesTest::walkThroughDownload),
            list,
            cell,
            of("shell", "JAWindowController", &HostFilesTest::walkThroughOlderWindow),
            of("download", "JABodyViewController", &HostFilesTest::walkThroughOlderWindow)};
}

std::vector<Lack> lacks()
{
    std::vector<Lack> all;
    for (const File& file : files()) {
        const QString place = file.cell.isEmpty() ? QString() : QStringLiteral(" in the cell ") + file.cell;
        const QString beginning =
            QStringLiteral("interface file %1 (the host's own) of %2: ").arg(file.name(), file.owner);
        for (const QString& source : file.sources) {
            for (const QString& outlet : outletsOf(source))
                all.push_back({file, outlet, {}, beginning + QStringLiteral("outlets missing: ") + outlet + place});
            for (const QString& action : actionsOf(source))
                all.push_back({file, {}, action, beginning + QStringLiteral("actions missing: ") + action});
        }
    }
    return all;
}

/// The older window has its panels' files from the host in any case.
QHash<QString, QByteArray> filesWith(const File& file, const QByteArray& text)
{
    QHash<QString, QByteArray> texts;
    if (file.walk == &HostFilesTest::walkThroughOlderWindow) {
        for (const char* panel : {"download/JABodyViewController", "shell/JAHeadViewController"})
            texts.insert(QFileInfo(QLatin1String(panel)).fileName(), shippedFile(QLatin1String(panel)));
    }
    texts.insert(file.name(), text);
    return texts;
}

std::string nameOf(const File& file)
{
    return (file.name() + file.cell).toStdString();
}

void PrintTo(const File& file, std::ostream* out)
{
    *out << nameOf(file);
}

void PrintTo(const Lack& lack, std::ostream* out)
{
    *out << lack.complaint.toStdString();
}

class HostFileThatLacks : public HostFilesTest, public testing::WithParamInterface<Lack>
{
};

TEST_P(HostFileThatLacks, somethingIsReportedInOneLineAndWorksForTheRest)
{
    const Lack& lack = GetParam();
    QByteArray text = shippedFile(lack.file.path);
    const QByteArray before = text;
    if (lack.action.isEmpty())
        text.replace("name=\"" + lack.outlet.toUtf8() + "\"", "name=\"ofAnotherName\"");
    else
        text.replace('>' + lack.action.toUtf8() + '<', "><");
    ASSERT_NE(text, before);
    const HostFiles files(filesWith(lack.file, text));

    (this->*lack.file.walk)();

    EXPECT_THAT(complaints(), ElementsAre(lack.complaint));
}

INSTANTIATE_TEST_SUITE_P(files, HostFileThatLacks, testing::ValuesIn(lacks()), [](const auto& each) {
    const Lack& lack = each.param;
    return nameOf(lack.file) + '_' + (lack.outlet + lack.action).toStdString();
});

class HostFile : public HostFilesTest, public testing::WithParamInterface<File>
{
};

TEST_P(HostFile, thatIsCompleteIsTakenWithoutAWord)
{
    const HostFiles files(filesWith(GetParam(), shippedFile(GetParam().path)));

    (this->*GetParam().walk)();

    EXPECT_THAT(complaints(), IsEmpty());
}

TEST_P(HostFile, thatCannotBeReadGivesAnEmptyWindow)
{
    for (const char* text : {"", "not XML at all", "<ui version=\"4.0\"><class>Empty</class></ui>"}) {
        log.clear();
        const HostFiles files(filesWith(GetParam(), text));

        (this->*GetParam().walk)();

        ASSERT_EQ(complaints().size(), 1) << text;
        EXPECT_THAT(complaints()[0].toStdString(),
                    testing::MatchesRegex("interface file " + GetParam().name().toStdString() +
                                          " \\(the host's own\\) is (missing or empty|broken): .+"));
    }
}

INSTANTIATE_TEST_SUITE_P(files, HostFile, testing::ValuesIn(files()),
                         [](const auto& each) { return nameOf(each.param); });

TEST_F(HostFilesTest, areComplainedAboutWithBothClassesWhereAnOutletIsOfAnother)
{
    QByteArray text = shippedFile(QStringLiteral("shell/JALoginWindow"));
    text.replace("class=\"QLabel\" name=\"errorLabel\"", "class=\"QPushButton\" name=\"errorLabel\"");
    text.replace("name=\"spiner\"", "name=\"spinner\"");
    const HostFiles files({{QStringLiteral("JALoginWindow"), text}});

    walkThroughUpload();

    EXPECT_THAT(complaints(), ElementsAre(QStringLiteral(
                                  "interface file JALoginWindow (the host's own) of JALoginWindow: outlets missing: "
                                  "errorLabel (a QLabel is needed, found a QPushButton), spiner")));
}

TEST_F(HostFilesTest, areTheOnlyOnesForThePanelsOfTheOlderWindow)
{
    const auto controller = JAWindowController::init();
    ASSERT_NE(controller->window(), nullptr);
    EXPECT_THAT(controller->interfaceProblems(), IsEmpty());
    EXPECT_THAT(controller->bodyViewController()->interfaceProblems(),
                testing::Contains(QStringLiteral("file JABodyViewController")));
    EXPECT_THAT(controller->headViewController()->interfaceProblems(),
                testing::Contains(QStringLiteral("file JAHeadViewController")));
}

TEST_F(HostFilesTest, replaceTheFrameworksOwn)
{
    QByteArray text = shippedFile(QStringLiteral("shell/JALoginWindow"));
    text.replace("<string>Log in to Jira</string>", "<string>Sign in to the loom</string>");
    const HostFiles files({{QStringLiteral("JALoginWindow"), text}});
    const auto form = JALoginWindow::init();

    EXPECT_EQ(form->window()->title(), QStringLiteral("Sign in to the loom"));
}

} // namespace
