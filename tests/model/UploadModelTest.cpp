#include "platform/toolkit/nib/FrameworkBundle.h"
#include "tests/kit/JiraTest.h"
#include "tests/model/Play.h"
#include "upload/JAUploadBodyViewController.h"

#include <QFileInfo>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

/// What the upload panel is to show, as far as a user can tell, and what is to lie on disk and server.
struct Model
{
    enum class Document { There, Gone, Attached };
    enum class Answer { Taken, Page, Dropped };

    QString key = QStringLiteral("ABC-1");
    Document document = Document::There;
    QString attachedTo;
    bool isFileThere = true;
    bool isSheetUp = false;
    bool isUnderWay = false;
    /// Whether the document that is under way is still the panel's.
    bool isOwn = true;
    bool hasFailed = false;
    Answer answer = Answer::Taken;
    QString sentTo;
    bool isSent = false;
    std::size_t stored = 0;

    void pressUpload(Answer newAnswer)
    {
        if (isSheetUp || key.isEmpty())
            return;
        isSheetUp = true;
        isUnderWay = true;
        isOwn = true;
        hasFailed = false;
        answer = newAnswer;
        sentTo = key;
        // Without a file an empty form goes out.
        isSent = isFileThere;
        // What the server takes it has, whether its answer arrives or not.
        if (answer != Answer::Page && isSent && sentTo == QStringLiteral("ABC-1"))
            ++stored;
    }

    void end(bool isSuccess)
    {
        isUnderWay = false;
        hasFailed = !isSuccess;
        if (!isOwn)
            return;
        isFileThere = false;
        if (isSuccess) {
            document = Document::Attached;
            attachedTo = sentTo;
        } else if (document == Document::There) {
            document = Document::Gone;
        }
    }

    void letServerAnswer()
    {
        if (isUnderWay)
            end(answer == Answer::Taken && isSent && sentTo == QStringLiteral("ABC-1"));
    }

    void closeSheet()
    {
        if (!isSheetUp)
            return;
        if (isUnderWay)
            end(false);
        isSheetUp = false;
    }

    void pressReturn()
    {
        if (!isSheetUp)
            pressUpload(Answer::Taken);
        else if (!isUnderWay)
            closeSheet();
    }

    void takeAnotherDocument()
    {
        document = Document::There;
        isFileThere = true;
        isOwn = false;
    }

    QString sheetText() const
    {
        if (!isSheetUp)
            return QStringLiteral("no sheet");
        if (isUnderWay)
            return QStringLiteral("sheet: under way, Cancel");
        return hasFailed ? QStringLiteral("sheet: Error, Close") : QStringLiteral("sheet: DONE, Close");
    }

    QString documentText() const
    {
        switch (document) {
        case Document::There:
            return QStringLiteral("the document, Cancel");
        case Document::Gone:
            return QStringLiteral("the document is gone, Close");
        case Document::Attached:
            break;
        }
        return QStringLiteral("Attached to %1, Close").arg(attachedTo);
    }

    QString text() const
    {
        return QStringList{sheetText(), documentText(), isSheetUp ? QStringLiteral("dimmed") : QStringLiteral("usable"),
                           isFileThere ? QStringLiteral("a file") : QStringLiteral("no file"),
                           QStringLiteral("%1 on the server").arg(stored)}
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
        m_panel = JAUploadBodyViewController::initWithNibName(QStringLiteral("JAUploadBodyViewController"),
                                                              tljira::frameworkBundle());
        m_window = tljira::Window::create(QStringLiteral("Upload"), m_panel->view());
        takeAnotherDocument();
        m_window->makeKeyAndOrderFront();
        type(QStringLiteral("ABC-1"));
    }

    ~Stage()
    {
        m_server.behave();
        m_server.release();
        waitUntil([this] { return !m_panel->isUploading(); });
        m_window->close();
        m_panel.reset();
        drainMainQueue();
    }

    void type(const QString& key)
    {
        if (!isSheetUp())
            ui::type(m_panel->taskTextField(), key);
    }

    void pressUpload(Model::Answer answer)
    {
        if (isSheetUp())
            return;
        prepare(answer);
        ui::click(m_panel->uploadFileButton());
        waitForServer();
    }

    void pressReturn()
    {
        const bool mayUpload = !isSheetUp();
        if (mayUpload)
            prepare(Model::Answer::Taken);
        ui::press(m_window->widget(), Qt::Key_Return);
        if (mayUpload)
            waitForServer();
    }

    void letServerAnswer() { m_server.release(); }

    void closeSheet()
    {
        if (isSheetUp())
            ui::click(sheet().cancelButton());
    }

    void pressEscape() { ui::press(m_window->widget(), Qt::Key_Escape); }

    void takeAnotherDocument()
    {
        m_documents.push_back(std::make_unique<LoneDocument>());
        m_panel->setNewPathFile(m_documents.back()->path(), LoneDocument::name());
    }

    QString text() const
    {
        return QStringList{
            sheetText(), documentText(), isShadowed() ? QStringLiteral("dimmed") : QStringLiteral("usable"),
            QFileInfo::exists(m_documents.back()->path()) ? QStringLiteral("a file") : QStringLiteral("no file"),
            QStringLiteral("%1 on the server").arg(m_server.attachments("ABC-1").size())}
            .join(QStringLiteral(" | "));
    }

private:
    JAUploadingWindow& sheet() const { return *m_panel->jaUploadingWindow(); }
    bool isSheetUp() const { return m_window->attachedSheet() == sheet().window(); }

    bool isShadowed() const { return ui::isShown(m_panel->shadow()) && !m_panel->taskTextField()->isEnabled(); }

    /// Each upload is held before its answer.
    void prepare(Model::Answer answer)
    {
        Fault fault = Fault().hold(Point::responseHead(0));
        if (answer == Model::Answer::Page)
            fault.status(200, "<html>", "text/html");
        if (answer == Model::Answer::Dropped)
            fault.close(Point::responseHead(1));
        // That somebody went away the server learns a little later.
        RC_ASSERT(waitUntil([this] { return m_server.heldCount() == 0; }));
        m_server.behave();
        m_server.misbehave(Match::on("POST", "*/attachments"), fault);
    }

    void waitForServer()
    {
        if (isSheetUp())
            RC_ASSERT(waitUntil([this] { return m_server.heldCount() == 1; }));
    }

    QString sheetText() const
    {
        if (!isSheetUp())
            return QStringLiteral("no sheet");
        const QString button = sheet().cancelButton()->text().remove(u'&');
        if (ui::isShown(sheet().errorView()))
            return QStringLiteral("sheet: %1, %2").arg(sheet().errortitle()->text(), button);
        const bool isDone = sheet().sizeLabel()->text() == QStringLiteral("DONE");
        return QStringLiteral("sheet: %1, %2")
            .arg(isDone ? QStringLiteral("DONE") : QStringLiteral("under way"), button);
    }

    QString documentText() const
    {
        const QString button = m_panel->cancelButton()->text().remove(u'&');
        for (const char* name : {"goneLabel", "attachedLabel"}) {
            const auto* label = m_panel->view()->findChild<QLabel*>(QLatin1String(name));
            if (ui::isShown(label) && !label->text().isEmpty())
                return label->text().startsWith(QStringLiteral("The document is gone"))
                           ? QStringLiteral("the document is gone, %1").arg(button)
                           : QStringLiteral("%1, %2").arg(label->text(), button);
        }
        return QStringLiteral("the document, %1").arg(button);
    }

    standin::Server& m_server;
    std::shared_ptr<JAUploadBodyViewController> m_panel;
    std::shared_ptr<tljira::Window> m_window;
    std::vector<std::unique_ptr<LoneDocument>> m_documents;
};

constexpr const char* acts[] = {
    "the user types ABC-1",
    "the user types a key that the server does not know",
    "the user empties the key",
    "the user presses Upload",
    "the user presses Upload; the server will answer with a page",
    "the user presses Upload; the server will drop the connection",
    "the user presses Return",
    "the server answers",
    "the user presses the sheet's button",
    "the user presses Escape",
    "the panel gets another document",
};

void perform(const model::Act& act, Model& model, Stage& stage)
{
    const auto type = [&](const QString& key) {
        stage.type(key);
        if (!model.isSheetUp)
            model.key = key;
    };
    const auto upload = [&](Model::Answer answer) {
        stage.pressUpload(answer);
        model.pressUpload(answer);
    };
    switch (act.index) {
    case 0:
        return type(QStringLiteral("ABC-1"));
    case 1:
        return type(QStringLiteral("ABC-99"));
    case 2:
        return type(QString());
    case 3:
        return upload(Model::Answer::Taken);
    case 4:
        return upload(Model::Answer::Page);
    case 5:
        return upload(Model::Answer::Dropped);
    case 6:
        stage.pressReturn();
        return model.pressReturn();
    case 7:
        stage.letServerAnswer();
        return model.letServerAnswer();
    case 8:
        stage.closeSheet();
        return model.closeSheet();
    case 9:
        stage.pressEscape();
        return model.closeSheet();
    case 10:
        stage.takeAnotherDocument();
        return model.takeAnotherDocument();
    }
}

class UploadModelTest : public JiraTest
{
protected:
    void SetUp() override { logIn(); }
};

TEST_F(UploadModelTest, thePanelDoesWhatTheModelDoesInEveryPlay)
{
    model::expectForAll(500, [this] {
        const std::vector<model::Act> play = *model::plays(acts);
        // Plays may go on for hours.
        forgetThePast();
        for (const auto& attachment : server.attachments("ABC-1"))
            server.removeAttachment(attachment.id);
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
