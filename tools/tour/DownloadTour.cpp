#include "framework/TLJiraController.h"
#include "tools/tour/Scenes.h"
#include "tools/tour/Stage.h"
#include "tools/tour/User.h"

#include <QFile>
#include <QFileInfo>
#include <QScrollBar>

namespace tessaloom::tour {

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;

QStringList titlesOf(const JAListAttachedFilesWindow& list)
{
    QStringList titles;
    const tljira::TableView& table = *list.tableView();
    for (qint64 row = 0; row < table.numberOfRows(); ++row) {
        const auto* cell = dynamic_cast<JAAttachedCell*>(table.cellAtRow(row));
        titles << (cell ? cell->titleLabel()->text() : QStringLiteral("(out of sight)"));
    }
    return titles;
}

JAAttachedCell* cellTitled(const JAListAttachedFilesWindow& list, const QString& title)
{
    const auto row = titlesOf(list).indexOf(title);
    return row < 0 ? nullptr : dynamic_cast<JAAttachedCell*>(list.tableView()->cellAtRow(row));
}

class Visit
{
public:
    Visit(Stage& stage, JMWindowController& entry)
        : m_stage(stage)
        , m_entry(entry)
    {
    }

    Step logIn();
    Step slowLookUp();
    Step emptyList();
    Step cancelledDownload();
    Step failedDownload();
    Step secondLookUp();
    Step download();

private:
    JADownloadBodyViewController& panel() const { return *m_entry.bodyViewController(); }
    JAListAttachedFilesWindow& list() const { return *panel().jaListAttachedWindow(); }

    Step lookUp(QString key);
    Step closeList();
    Step beginDownload(QString title);

    Stage& m_stage;
    JMWindowController& m_entry;
};

Step Visit::logIn()
{
    m_stage.journal.scene(QStringLiteral("The window that opens a document of an issue"));
    const auto form = m_entry.jaLoginWindow();
    co_await m_stage.until(QStringLiteral("it asks for a login"), [&] { return form->view()->isVisible(); });
    co_await m_stage.sendLogin(form, QLatin1String(Stage::password));
    co_await m_stage.until(QStringLiteral("header and panel are shown"),
                           [&] { return m_entry.downloadViewContainer()->isVisible(); });
    co_await m_stage.until(QStringLiteral("the header shows the avatar"),
                           [&] { return !m_entry.headViewController()->avatarImage()->image().isNull(); });
    co_await m_stage.picture(QStringLiteral("download-panel"), m_entry.window());
}

Step Visit::lookUp(QString key)
{
    m_stage.journal.note(QStringLiteral("type the key %1 and press Show Documents").arg(key));
    co_await user::type(panel().issueKeyTextField(), key);
    co_await user::click(panel().getAttachButton());
    co_await m_stage.until(QStringLiteral("the list comes up"),
                           [&] { return m_entry.window()->attachedSheet() != nullptr; });
    co_await InNextTurn();
}

Step Visit::slowLookUp()
{
    m_stage.journal.scene(QStringLiteral("A look-up whose server is slow"));
    m_stage.server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    co_await user::type(panel().issueKeyTextField(), QStringLiteral("LOOM-8"));
    co_await user::click(panel().getAttachButton());
    co_await m_stage.until(QStringLiteral("the server has been asked"),
                           [&] { return m_stage.server.heldCount() == 1; });
    co_await m_stage.picture(QStringLiteral("looking-up"), m_entry.window());
    m_stage.server.release();
    co_await m_stage.until(QStringLiteral("the list comes up"),
                           [&] { return m_entry.window()->attachedSheet() != nullptr; });
    co_await closeList();
}

Step Visit::closeList()
{
    co_await user::click(Stage::button(list().view(), "cancalAction"));
    co_await m_stage.until(QStringLiteral("the list closes"), [&] { return !m_entry.window()->attachedSheet(); });
}

Step Visit::emptyList()
{
    m_stage.journal.scene(QStringLiteral("An issue without documents"));
    co_await lookUp(QStringLiteral("LOOM-8"));
    m_stage.journal.expect(QStringLiteral("it says that there is nothing"), list().noDataView()->isVisible());
    co_await m_stage.picture(QStringLiteral("list-empty"), m_entry.window());
    co_await closeList();
}

Step Visit::beginDownload(QString title)
{
    auto* const cell = cellTitled(list(), title);
    if (!m_stage.journal.expect(QStringLiteral("the list has \"%1\"").arg(title), cell))
        co_return;
    m_stage.journal.note(QStringLiteral("press Download"));
    co_await user::click(cell->downloadButton());
    co_await m_stage.until(QStringLiteral("the progress is shown"), [&] { return list().downloadView()->isVisible(); });
}

Step Visit::cancelledDownload()
{
    m_stage.journal.scene(QStringLiteral("A download that the user cancels"));
    co_await lookUp(QStringLiteral("LOOM-7"));
    m_stage.journal.expectText(QStringLiteral("documents only, the newest first"),
                               titlesOf(list()).join(QLatin1String(", ")),
                               QStringLiteral("twill and herringbone.tessaloom, sampler.tessaloom"));
    co_await m_stage.picture(QStringLiteral("list"), m_entry.window());

    m_stage.server.misbehave(Match::on("*/twill*").once(), Fault().hold(Point::responseBody(10 << 20)));
    co_await beginDownload(QStringLiteral("twill and herringbone.tessaloom"));
    co_await m_stage.until(QStringLiteral("the progress shows a part"), [&] {
        return m_stage.server.heldCount() == 1 && list().downloadProgressBar()->value() == 10 * 100 / 24;
    });
    m_stage.journal.expectText(QStringLiteral("it reads"), list().downloadPercent()->text(), QStringLiteral("41 %"));
    co_await m_stage.picture(QStringLiteral("downloading"), m_entry.window());
    co_await closeList();
    co_await m_stage.untilQuiet();
    m_stage.journal.expect(QStringLiteral("no part of the file is left"), !QFileInfo::exists(*list().path()));
    m_stage.journal.expect(QStringLiteral("the window stays for another try"), m_entry.window()->isVisible());
}

Step Visit::failedDownload()
{
    m_stage.journal.scene(QStringLiteral("A download whose connection breaks"));
    co_await lookUp(QStringLiteral("LOOM-7"));
    m_stage.server.misbehave(Match::on("*/twill*").once(), Fault().reset(Point::responseBody(10 << 20)));
    co_await beginDownload(QStringLiteral("twill and herringbone.tessaloom"));
    co_await m_stage.until(QStringLiteral("an error is shown"),
                           [&] { return !list().downloadError()->text().isEmpty(); });
    m_stage.journal.expectText(QStringLiteral("it says"), list().downloadError()->text(),
                               QStringLiteral("The network connection was lost."));
    m_stage.journal.expect(QStringLiteral("no part of the file is left"), !QFileInfo::exists(*list().path()));
    co_await m_stage.picture(QStringLiteral("download-failed"), m_entry.window());
    co_await closeList();
}

Step Visit::secondLookUp()
{
    m_stage.journal.scene(QStringLiteral("Another issue"));
    co_await lookUp(QStringLiteral("LOOM-9"));
    m_stage.journal.expect(QStringLiteral("the list is the other issue's, the document sent before on top"),
                           titlesOf(list()).size() == 2 && titlesOf(list()).constFirst() == m_stage.documentName());
    co_await m_stage.picture(QStringLiteral("list-with-long-name"), m_entry.window());
}

Step Visit::download()
{
    m_stage.journal.scene(QStringLiteral("A download that the editor opens"));
    co_await beginDownload(m_stage.documentName());
    co_await m_stage.until(QStringLiteral("it says \"DONE\""),
                           [&] { return list().downloadPercent()->text() == QLatin1String("DONE"); });
    co_await m_stage.picture(QStringLiteral("download-done"), m_entry.window());
    co_await user::click(Stage::button(list().view(), "cancalAction"));
}

} // namespace

Step downloadTour(Stage& stage)
{
    co_await stage.chooseInFileMenu(QStringLiteral("New"));
    co_await stage.chooseInFileMenu(QStringLiteral("Open from Jira…"));
    const auto entry = std::dynamic_pointer_cast<JMWindowController>(JAController::sharedInstance()->delegate());
    Visit visit(stage, *entry);
    co_await visit.logIn();
    co_await visit.slowLookUp();
    co_await visit.emptyList();
    co_await visit.cancelledDownload();
    co_await visit.failedDownload();
    co_await visit.secondLookUp();
    co_await visit.download();

    co_await stage.until(QStringLiteral("the window closes"), [&] { return !entry->window()->isVisible(); });
    co_await stage.until(QStringLiteral("the editor has the document that was sent"),
                         [&] { return stage.editor.documentBytes() == stage.documentBytes(); });
    stage.journal.expectText(QStringLiteral("under its name"), stage.editor.documentName(), stage.documentName());
    stage.journal.expect(QStringLiteral("not saved anywhere yet"),
                         stage.editor.documentPath().isEmpty() && stage.editor.isWindowModified());
    co_await stage.picture(QStringLiteral("opened-from-jira"), &stage.editor);
}

} // namespace tessaloom::tour
