#include "download/JADownloadBodyViewController.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "tests/download/DownloadTest.h"
#include "tests/model/Play.h"

#include <QFileInfo>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

const QString newer = QStringLiteral("newer.tessaloom");
const QString older = QStringLiteral("older.tessaloom");

/// What the download panel is to show, as far as a user can tell, and what is to lie on the disk.
struct Model
{
    enum class Sheet { None, List, Empty, UnderWay, Done, Failed };

    QString key = QStringLiteral("ABC-1");
    Sheet sheet = Sheet::None;
    bool willServe = true;
    bool isClosed = false;
    /// Of the newest download.
    QString name;
    bool isFileThere = false;
    /// What the panel hands to its host.
    QString result;

    void showDocuments()
    {
        if (sheet != Sheet::None || isClosed)
            return;
        if (key == QStringLiteral("ABC-1"))
            sheet = Sheet::List;
        else if (key == QStringLiteral("ABC-2"))
            sheet = Sheet::Empty;
    }

    void download(const QString& newName, bool isServed)
    {
        if (sheet != Sheet::List)
            return;
        sheet = Sheet::UnderWay;
        name = newName;
        willServe = isServed;
        // Its folder is made anew.
        isFileThere = false;
    }

    void letServerAnswer()
    {
        if (sheet != Sheet::UnderWay)
            return;
        sheet = willServe ? Sheet::Done : Sheet::Failed;
        isFileThere = willServe;
    }

    void endSheet()
    {
        if (sheet == Sheet::None)
            return;
        result = fileName();
        isClosed = sheet == Sheet::Done;
        sheet = Sheet::None;
    }

    void pressEscape()
    {
        if (sheet == Sheet::None)
            isClosed = true;
        else
            endSheet();
    }

    void pressReturn()
    {
        if (sheet == Sheet::None)
            showDocuments();
        else if (sheet == Sheet::List)
            download(newer, true);
        else if (sheet != Sheet::UnderWay)
            endSheet();
    }

    /// A document is stored with its extension, which its attachment has already.
    QString fileName() const { return name.isEmpty() ? name : name + QStringLiteral(".tessaloom"); }

    QString sheetText() const
    {
        switch (sheet) {
        case Sheet::None:
            return QStringLiteral("no sheet");
        case Sheet::List:
            return QStringLiteral("list of 2, Close");
        case Sheet::Empty:
            return QStringLiteral("ABC-2 has no documents of this program, Close");
        case Sheet::UnderWay:
            return fileName() + QStringLiteral(" is under way, Cancel");
        case Sheet::Done:
            return fileName() + QStringLiteral(" DONE, Open");
        case Sheet::Failed:
            break;
        }
        return fileName() + QStringLiteral(" The network connection was lost., Close");
    }

    QString text() const
    {
        return QStringList{sheetText(), isClosed ? QStringLiteral("closed") : QStringLiteral("open"),
                           isFileThere ? QStringLiteral("the bytes of ") + name : QStringLiteral("no file"),
                           QStringLiteral("result: ") + result}
            .join(QStringLiteral(" | "));
    }
};

/// The same of the real panel in its window.
class Stage
{
public:
    explicit Stage(standin::Server& server)
        : m_server(server)
    {
        m_panel = JADownloadBodyViewController::initWithNibName(QStringLiteral("JADownloadBodyViewController"),
                                                                tljira::frameworkBundle());
        m_window = shownWindow(m_panel->view());
        type(QStringLiteral("ABC-1"));
    }

    ~Stage()
    {
        m_server.behave();
        JAController::sharedInstance()->cancelDownload();
        m_server.release();
        waitUntil([this] { return m_server.heldCount() == 0; });
        m_window->close();
        drainMainQueue();
    }

    bool isUsable() const { return m_window->isVisible() && !m_window->attachedSheet(); }

    void type(const QString& key)
    {
        if (isUsable())
            ui::type(m_panel->issueKeyTextField(), key);
    }

    void showDocuments()
    {
        if (!isUsable())
            return;
        ui::click(m_panel->getAttachButton());
        waitForAnswer();
    }

    void download(int row, bool isServed)
    {
        if (!isListed())
            return;
        prepare(isServed);
        ui::click(cellAtRow(list(), row)->downloadButton());
        RC_ASSERT(waitUntil([this] { return m_server.heldCount() == 1; }));
    }

    void letServerAnswer() { m_server.release(); }

    void endSheet()
    {
        if (m_window->attachedSheet())
            ui::click(closeButton(*list().window()));
    }

    void press(Qt::Key key)
    {
        if (!m_window->isVisible())
            return;
        // The keyboard comes to what is shown in a later turn of the event loop.
        RC_ASSERT(waitUntil([this] { return ui::isOnScreen(m_window->widget()->focusWidget()); }));
        const bool asks = isUsable();
        const bool downloads = isListed();
        if (downloads)
            prepare(true);
        ui::press(m_window->widget(), key);
        if (asks && key == Qt::Key_Return)
            waitForAnswer();
        if (downloads && key == Qt::Key_Return)
            RC_ASSERT(waitUntil([this] { return m_server.heldCount() == 1; }));
    }

    QString text() const
    {
        return QStringList{sheetText(), m_window->isVisible() ? QStringLiteral("open") : QStringLiteral("closed"),
                           fileText(),
                           QStringLiteral("result: ") + QFileInfo(m_panel->path().value_or(QString())).fileName()}
            .join(QStringLiteral(" | "));
    }

private:
    JAListAttachedFilesWindow& list() const { return *m_panel->jaListAttachedWindow(); }
    bool isListed() const { return m_window->attachedSheet() && ui::isShown(list().wrapperTableView()); }

    /// Each download is held before its answer.
    void prepare(bool isServed)
    {
        // That somebody went away the server learns a little later.
        RC_ASSERT(waitUntil([this] { return m_server.heldCount() == 0; }));
        Fault fault = Fault().hold(Point::responseHead(0));
        if (!isServed)
            fault.close(Point::responseBody(3));
        m_server.behave();
        m_server.misbehave(Match::on("/secure/*"), fault);
    }

    void waitForAnswer()
    {
        const auto asked = m_server.requestCount();
        const auto* help = m_panel->view()->findChild<QLabel*>(QStringLiteral("issueKeyHelp"));
        RC_ASSERT(waitUntil([&] {
            return m_server.finishedRequestCount() >= asked && !help->text().startsWith(QStringLiteral("Looking for"));
        }));
        drainMainQueue();
    }

    QString sheetText() const
    {
        if (!m_window->attachedSheet())
            return QStringLiteral("no sheet");
        const auto* button = closeButton(*list().window());
        const QString end = QStringLiteral(", ") + (button ? button->text().remove(u'&') : QStringLiteral("no button"));
        if (ui::isShown(list().wrapperTableView()))
            return QStringLiteral("list of %1").arg(shownTitles(list()).size()) + end;
        if (ui::isShown(list().noDataView()))
            return list().noDataView()->findChild<QLabel*>(QStringLiteral("noDataLabel"))->text() + end;
        const QString name = QFileInfo(list().path().value_or(QString())).fileName();
        if (ui::isShown(list().downloadError()))
            return name + u' ' + list().downloadError()->text() + end;
        const bool isDone = list().downloadPercent()->text() == QStringLiteral("DONE");
        return name + (isDone ? QStringLiteral(" DONE") : QStringLiteral(" is under way")) + end;
    }

    QString fileText() const
    {
        const auto bytes = list().path() ? contentsOf(*list().path()) : std::nullopt;
        return bytes ? QStringLiteral("the bytes of ") + QString::fromUtf8(*bytes) : QStringLiteral("no file");
    }

    standin::Server& m_server;
    std::shared_ptr<JADownloadBodyViewController> m_panel;
    std::shared_ptr<tljira::Window> m_window;
};

constexpr const char* acts[] = {
    "the user types ABC-1",
    "the user types ABC-2, which has no documents",
    "the user types a key that the server does not know",
    "the user presses Show Documents",
    "the user downloads the first row",
    "the user downloads the second row",
    "the user downloads the first row; the server will drop the connection",
    "the server answers",
    "the user presses the sheet's button",
    "the user presses Escape",
    "the user presses Return",
};

void perform(const model::Act& act, Model& model, Stage& stage)
{
    const auto type = [&](const QString& key) {
        stage.type(key);
        if (model.sheet == Model::Sheet::None && !model.isClosed)
            model.key = key;
    };
    const auto download = [&](int row, bool isServed) {
        stage.download(row, isServed);
        model.download(row == 0 ? newer : older, isServed);
    };
    switch (act.index) {
    case 0:
        return type(QStringLiteral("ABC-1"));
    case 1:
        return type(QStringLiteral("ABC-2"));
    case 2:
        return type(QStringLiteral("ABC-99"));
    case 3:
        stage.showDocuments();
        return model.showDocuments();
    case 4:
        return download(0, true);
    case 5:
        return download(1, true);
    case 6:
        return download(0, false);
    case 7:
        stage.letServerAnswer();
        return model.letServerAnswer();
    case 8:
        stage.endSheet();
        return model.endSheet();
    case 9:
        stage.press(Qt::Key_Escape);
        return model.pressEscape();
    case 10:
        stage.press(Qt::Key_Return);
        return model.pressReturn();
    }
}

class DownloadModelTest : public DownloadTest
{
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        server.addIssue("ABC-2");
        for (const auto& [name, created] :
             {std::pair(older, "2017-03-14T10:22:33.123+0100"), {newer, "2018-03-14T10:22:33.123+0100"}})
            server.addAttachment("ABC-1",
                                 {.fileName = name.toStdString(), .bytes = name.toStdString(), .created = created});
    }
};

TEST_F(DownloadModelTest, thePanelDoesWhatTheModelDoesInEveryPlay)
{
    model::expectForAll(500, [this] {
        const std::vector<model::Act> play = *model::plays(acts);
        // Plays may go on for hours.
        forgetThePast();
        Model model;
        Stage stage(server);
        for (const model::Act& act : play) {
            perform(act, model, stage);
            model::expectSame(
                act, [&] { return stage.text(); }, model.text());
        }
    });
}

} // namespace
