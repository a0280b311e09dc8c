// Does one of the jobs in its windows, as a user would who is logged in:
//
//     torture_window PORT attach|fetch DOCUMENT
//
// It says on standard output how that ended, as its user sees it, and ends with
//
//     0   the job was done; what was fetched is DOCUMENT
//     1   it was not: an error is shown, or the login form, or the panel as it was before a look-up
//     2   it says that it was done, and it was not
//     3   nothing of that
//
// The calls that may be refused are counted from the moment at which the host opens the window, without those of the
// look at what was fetched.

#include "client/JAController.h"
#include "framework/TLJiraJobs.h"
#include "platform/foundation/Log.h"
#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "tests/kit/Files.h"
#include "tests/kit/Jira.h"
#include "tests/kit/Ui.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>

#include <cstdio>
#include <dlfcn.h>

namespace {

using tests::waitUntil;
namespace ui = tests::ui;

enum Status { Done = 0, Failed = 1, Wrong = 2, Stuck = 3 };

/// A user gives up then.
constexpr auto patience = std::chrono::seconds(20);

int say(Status status, const QString& text)
{
    std::printf("%s\n", qUtf8Printable(text));
    std::fflush(stdout);
    return status;
}

void call(const char* function)
{
    if (auto* const found = reinterpret_cast<void (*)()>(dlsym(RTLD_DEFAULT, function)))
        found();
}

void beginCounting()
{
    call("beginTorture");
}

/// Whether the file is the document. The calls of this look do not count.
bool isWhole(const QString& file, const QString& document)
{
    call("endTorture");
    const bool isSame = tests::contentsOf(file) == tests::contentsOf(document);
    call("beginTorture");
    return isSame;
}

/// Whether the user can begin; otherwise the login form is there.
template <typename Entry>
bool isReady(const Entry& entry, const QWidget* control)
{
    waitUntil([&] { return ui::isOnScreen(control) || ui::isOnScreen(entry.loginViewContainer()); }, patience);
    return ui::isOnScreen(control);
}

std::optional<TLJiraJobs::Result> endOfJob;

void noteEnd(const TLJiraJobs::Result& result)
{
    endOfJob = result;
}

int attach(const QString& document, QWidget& host)
{
    const QByteArray bytes = tests::contentsOf(document).value_or(QByteArray());
    beginCounting();
    TLJiraJobs::attach({QStringLiteral("plan.tessaloom"), bytes}, &host, noteEnd);
    const auto upload = std::dynamic_pointer_cast<TLJiraUpload>(JAController::sharedInstance()->delegate());
    JAUploadBodyViewController& panel = *upload->bodyViewController();
    if (!isReady(*upload, panel.uploadView()))
        return say(Failed, QStringLiteral("login form"));
    ui::type(panel.taskTextField(), QStringLiteral("ABC-1"));
    ui::click(panel.uploadFileButton());
    if (!waitUntil([&] { return !panel.isUploading(); }, patience))
        return say(Stuck, QStringLiteral("the upload does not end"));
    const QLabel* const message = panel.jaUploadingWindow()->errorMessage();
    const bool showsError = ui::isOnScreen(message) && !message->text().isEmpty();
    const QString text = showsError ? message->text() : QString();
    upload->window()->close();
    if (!waitUntil([] { return endOfJob.has_value(); }, patience))
        return say(Stuck, QStringLiteral("the job does not end"));
    if (endOfJob->outcome == TLJiraJobs::Outcome::Done)
        return showsError ? say(Wrong, QStringLiteral("done, and shows ") + text) : say(Done, QStringLiteral("done"));
    return showsError ? say(Failed, text) : say(Wrong, QStringLiteral("failed, and shows nothing"));
}

int endFetch(const QString& document, const QString& shown)
{
    if (!waitUntil([] { return endOfJob.has_value(); }, patience))
        return say(Stuck, QStringLiteral("the job does not end"));
    if (endOfJob->outcome != TLJiraJobs::Outcome::Done)
        return say(Failed, shown.isEmpty() ? endOfJob->error.value_or(tljira::Error()).localizedDescription() : shown);
    return isWhole(endOfJob->path, document) ? say(Done, QStringLiteral("done"))
                                             : say(Wrong, QStringLiteral("done, with other bytes"));
}

int fetch(const QString& document, QWidget& host)
{
    beginCounting();
    TLJiraJobs::fetch(&host, noteEnd);
    const auto entry = std::dynamic_pointer_cast<JMWindowController>(JAController::sharedInstance()->delegate());
    JADownloadBodyViewController& panel = *entry->bodyViewController();
    if (!isReady(*entry, panel.getAttachButton()))
        return say(Failed, QStringLiteral("login form"));
    ui::type(panel.issueKeyTextField(), QStringLiteral("ABC-1"));
    ui::click(panel.getAttachButton());
    const auto list = panel.jaListAttachedWindow();
    const auto button = [&list]() -> QPushButton* {
        auto* const cell =
            list->windowIfLoaded() ? dynamic_cast<JAAttachedCell*>(list->tableView()->cellAtRow(0)) : nullptr;
        return cell && ui::isOnScreen(cell->downloadButton()) ? cell->downloadButton() : nullptr;
    };
    // A look-up that fails is not told of.
    if (!waitUntil([&] { return button() != nullptr; }, std::chrono::seconds(5)))
        return say(Failed, QStringLiteral("panel as before"));
    ui::click(button());
    const auto failure = [&list] {
        return ui::isOnScreen(list->downloadError()) ? list->downloadError()->text() : QString();
    };
    if (!waitUntil([&] { return list->isDone() || !failure().isEmpty(); }, patience))
        return say(Stuck, QStringLiteral("the download does not end"));
    const QString shown = failure();
    ui::press(list->window()->widget()->window(), Qt::Key_Escape);
    if (!shown.isEmpty())
        entry->window()->close();
    return endFetch(document, shown);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    // The settings of whoever is logged in.
    QApplication::setApplicationName(QStringLiteral("tljira"));
    tljira::setLogEnabled(false);
    const QStringList arguments = QApplication::arguments();
    tests::Jira::routeTo(arguments.value(1).toInt());
    QWidget host;
    host.show();
    return arguments.value(2) == u"attach" ? attach(arguments.value(3), host) : fetch(arguments.value(3), host);
}
