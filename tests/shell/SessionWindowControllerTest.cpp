#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Application.h"
#include "platform/toolkit/windows/Decorations.h"
#include "tests/kit/GermanUser.h"
#include "tests/shell/TLJiraUploadTest.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>

namespace {

using namespace tests;
using namespace testing;

/// How both session-switching controllers treat their window, seen on the upload window.
class SessionWindowControllerTest : public TLJiraUploadTest
{
protected:
    ~SessionWindowControllerTest() override { tljira::pretendDecorations(std::nullopt); }

    /// Shows the window with its login form, and with a frame 4 wide at the sides and below and a title bar of 30.
    void openDecorated()
    {
        tljira::pretendDecorations(QMargins(4, 30, 4, 4));
        open();
        ASSERT_TRUE(waitForLoginForm());
        forgetThePast();
    }
};

TEST_F(SessionWindowControllerTest, takesTheSizeOfTheContainerAndItsPlaceFromTheUpperRightCorner)
{
    openDecorated();
    entry->window()->setFrame(QRectF(200, 100, 608, 434), false);
    ASSERT_EQ(entry->view()->size(), QSize(600, 400));
    entry->downloadViewContainer()->resize(500, 320);
    log.clear();
    entry->setActualView(entry->downloadViewContainer());

    // x = 200 + 608 - 500, y = 100 + 434 - 320, width = 500 + 8, height = 320 + 34
    EXPECT_EQ(entry->window()->frame(), QRectF(308, 214, 508, 354));
    EXPECT_EQ(log.lines(),
              QStringList({QStringLiteral(" {{0, 0}, {600, 400}}"), QStringLiteral(" {{200, 100}, {608, 434}}"),
                           QStringLiteral(" {{308, 214}, {508, 354}}")}));
}

TEST_F(SessionWindowControllerTest, movesItsUpperRightCornerOutwardsByTheDecorationsAtEverySwitch)
{
    openDecorated();
    entry->window()->setFrame(QRectF(200, 100, 608, 434), false);
    const QRectF before = entry->window()->frame();
    double top = before.y() + before.height();
    double right = before.x() + before.width();
    for (QWidget* container : {entry->downloadViewContainer(), entry->loginViewContainer(), entry->loginViewContainer(),
                               entry->downloadViewContainer()}) {
        entry->setActualView(container);
        const QRectF frame = entry->window()->frame();
        EXPECT_EQ(frame.y() + frame.height(), top + 34);
        EXPECT_EQ(frame.x() + frame.width(), right + 8);
        top += 34;
        right += 8;
    }
}

TEST_F(SessionWindowControllerTest, staysInItsCornerWithoutDecorations)
{
    tljira::pretendDecorations(QMargins());
    open();
    ASSERT_TRUE(waitForLoginForm());
    entry->window()->setFrame(QRectF(200, 100, 600, 400), false);
    entry->downloadViewContainer()->resize(500, 320);
    entry->setActualView(entry->downloadViewContainer());

    EXPECT_EQ(entry->window()->frame(), QRectF(300, 180, 500, 320));
}

TEST_F(SessionWindowControllerTest, showsTheContainerAloneAtTheOriginInItsOwnSize)
{
    openDecorated();
    entry->downloadViewContainer()->resize(500, 320);
    entry->downloadViewContainer()->hide();
    entry->setActualView(entry->downloadViewContainer());

    EXPECT_EQ(tljira::subviews(entry->view()), QList<QWidget*>{entry->downloadViewContainer()});
    EXPECT_EQ(entry->downloadViewContainer()->geometry(), QRect(0, 0, 500, 320));
    EXPECT_FALSE(entry->downloadViewContainer()->isHidden());
}

TEST_F(SessionWindowControllerTest, keepsWhatItShowsWhenItIsGivenNoContainer)
{
    openDecorated();
    const QRectF before = entry->window()->frame();
    entry->setActualView(nullptr);

    EXPECT_TRUE(ui::isOnScreen(entry->jaLoginWindow()->view()));
    EXPECT_EQ(entry->window()->frame(), before);
}

TEST_F(SessionWindowControllerTest, keepsTheContainerInStepWithTheWindowThatTheUserResizes)
{
    openDecorated();
    entry->window()->setFrame(QRectF(200, 100, 608, 434), false);
    entry->window()->widget()->resize(700, 500);
    drainMainQueue();

    EXPECT_EQ(entry->loginViewContainer()->size(), QSize(700, 500));
    EXPECT_EQ(entry->jaLoginWindow()->view()->size(), QSize(700, 500));
}

TEST_F(SessionWindowControllerTest, givesTheLoginContainerTheSizeOfTheForm)
{
    const QSize size = JALoginWindow::init()->window()->contentView()->size();
    openDecorated();

    EXPECT_EQ(entry->loginViewContainer()->size(), size);
    EXPECT_EQ(entry->window()->frame().size(), QSizeF(size + QSize(8, 34)));
}

TEST_F(SessionWindowControllerTest, keepsTheFormsOwnWindowAsAnInvisibleChild)
{
    open();

    EXPECT_EQ(entry->jaLoginWindow()->window()->parentWindow(), entry->window());
    EXPECT_FALSE(entry->jaLoginWindow()->window()->isVisible());
    EXPECT_EQ(entry->jaLoginWindow()->view()->parentWidget(), entry->loginViewContainer());
}

/// A child window above its parent is tied to it in the window system; one below is not.
TEST_F(SessionWindowControllerTest, keepsTheFormsOwnWindowBelowIts)
{
    QWidget content;
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    ASSERT_NE(entry->window(), nullptr);
    const auto child = entry->jaLoginWindow()->window();
    child->setContentView(&content);
    entry->showWindow();

    ASSERT_TRUE(child->isVisible());
    EXPECT_EQ(child->widget()->windowHandle()->transientParent(), nullptr);
    child->setContentView(nullptr);
}

/// Counts how often a view is painted.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget* view) { view->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

TEST_F(SessionWindowControllerTest, isDrawnAtOnceAndItsEdgesFollowAtASwitch)
{
    openDecorated();
    entry->window()->setFrame(QRectF(200, 100, 608, 434), false);
    drainMainQueue();
    entry->downloadViewContainer()->resize(500, 320);
    const PaintCount paints(entry->view());
    const PaintCount paintsOfContainer(entry->downloadViewContainer());
    entry->setActualView(entry->downloadViewContainer());

    EXPECT_EQ(entry->window()->frame().size(), QSizeF(508, 354));
    EXPECT_EQ(entry->window()->widget()->size(), QSize(600, 400));
    EXPECT_GT(paints.count, 0);
    EXPECT_GT(paintsOfContainer.count, 0);
    EXPECT_TRUE(waitUntil([this] { return entry->window()->widget()->size() == QSize(500, 320); }));
}

TEST_F(SessionWindowControllerTest, fillsItsAreasWithHeaderAndBody)
{
    logIn();
    open();
    ASSERT_TRUE(waitForBody());
    QWidget* body = entry->bodyViewController()->view();
    QWidget* header = entry->headViewController()->view();

    EXPECT_EQ(body->parentWidget(), entry->bodyView());
    EXPECT_EQ(body->geometry(), entry->bodyView()->rect());
    EXPECT_EQ(header->parentWidget(), entry->headView());
    EXPECT_EQ(header->geometry(), entry->headView()->rect());
    EXPECT_GE(body->height(), body->minimumSizeHint().height());
    EXPECT_GE(header->height(), header->minimumSizeHint().height());
    EXPECT_EQ(entry->bodyViewController()->representedObject(),
              QVariant::fromValue<qint64>(tljira::subviews(body).size()));
    EXPECT_EQ(entry->headViewController()->representedObject(),
              QVariant::fromValue<qint64>(tljira::subviews(header).size()));
}

TEST_F(SessionWindowControllerTest, takesSessionNewsQuietlyBeforeItsWindowIsLoaded)
{
    entry = TLJiraUpload::init();
    entry->jaInvalidSession();
    entry->jaValidSession();
    drainMainQueue();

    EXPECT_FALSE(entry->isWindowLoaded());
    EXPECT_EQ(entry->view(), nullptr);
}

TEST_F(SessionWindowControllerTest, endsAModalRunWhenItsWindowCloses)
{
    openDecorated();
    QTimer::singleShot(0, [this] { entry->window()->widget()->close(); });
    const int code = tljira::Application::runModalForWindow(entry->window());

    EXPECT_EQ(code, tljira::ModalResponse::Stop);
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("JAWindowController windowWillClose")));
    EXPECT_EQ(client->delegate(), entry);
}

/// A run ends by itself when its own window closes; here it is that of another window.
TEST_F(SessionWindowControllerTest, endsTheModalRunOfTheWindowWhoseSheetItIs)
{
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    QTimer::singleShot(0, [&] {
        host->beginSheet(entry->window(), nullptr);
        entry->window()->close();
        tljira::Application::stopModal(99); // does nothing when the run is stopped already
    });

    EXPECT_EQ(tljira::Application::runModalForWindow(host), tljira::ModalResponse::Stop);
    EXPECT_TRUE(host->isVisible());
}

TEST_F(SessionWindowControllerTest, closesWithoutAModalRun)
{
    openDecorated();
    entry->window()->close();

    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("JAWindowController windowWillClose")));
    EXPECT_FALSE(entry->window()->isVisible());
}

/// The window while the server is asked about the saved session.
class SessionCheckTest : public SessionWindowControllerTest
{
protected:
    void openWithoutAnAnswer()
    {
        logIn();
        server.misbehave(standin::Match::on("GET", "/rest/auth/1/session"),
                         standin::Fault().hold(standin::Point::responseHead(0)));
        open();
        waitForHeldExchange();
    }

    template <class View>
    View* part(const char* name) const
    {
        return tljira::findView<View>(entry->view(), name);
    }
};

TEST_F(SessionCheckTest, saysOnWhichServerItLooks)
{
    openWithoutAnAnswer();

    const auto* label = part<QLabel>("connectingLabel");
    const auto* spinner = part<tljira::ProgressIndicator>("connectingIndicator");
    ASSERT_TRUE(ui::isOnScreen(label));
    EXPECT_EQ(label->text(), QStringLiteral("Looking for your session on jira.example.test…"));
    EXPECT_TRUE(ui::isOnScreen(spinner));
    EXPECT_TRUE(spinner->isAnimating());
    server.release();
}

class GermanSessionCheckTest : GermanUser, public SessionCheckTest
{
};

TEST_F(GermanSessionCheckTest, saysOnWhichServerItLooks)
{
    openWithoutAnAnswer();
    EXPECT_EQ(part<QLabel>("connectingLabel")->text(),
              QStringLiteral("Ihre Sitzung auf jira.example.test wird gesucht\u00a0…"));
    server.release();
}

TEST_F(SessionCheckTest, isLeftWithCancel)
{
    openWithoutAnAnswer();
    ui::click(part<QPushButton>("cancelButton"));

    EXPECT_FALSE(entry->window()->isVisible());
    EXPECT_THAT(log.lines(), Contains(QStringLiteral("JAWindowController windowWillClose")));
    server.release();
}

TEST_F(SessionCheckTest, endsTheSheetThatTheWindowIsAtCancel)
{
    logIn();
    server.misbehave(standin::Match::on("GET", "/rest/auth/1/session"),
                     standin::Fault().hold(standin::Point::responseHead(0)));
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    host->makeKeyAndOrderFront();
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    std::vector<int> codes;
    host->beginSheet(entry->window(), [&codes](int code) { codes.push_back(code); });
    waitForHeldExchange();
    ui::click(part<QPushButton>("cancelButton"));

    EXPECT_THAT(codes, ElementsAre(0));
    server.release();
}

TEST_F(SessionCheckTest, givesWayToWhatTheServerAnswers)
{
    openWithoutAnAnswer();
    const QPointer label = part<QLabel>("connectingLabel");
    server.release();
    ASSERT_TRUE(waitForBody());
    drainMainQueue();

    EXPECT_EQ(part<QLabel>("connectingLabel"), nullptr);
    EXPECT_TRUE(waitUntil([&label] { return label.isNull(); }));
}

TEST_F(SessionCheckTest, hasTheWidthThatTheOtherStatesHave)
{
    openWithoutAnAnswer();
    std::vector<int> widths{entry->view()->width()};
    server.behave();
    server.release();
    ASSERT_TRUE(waitForBody());
    widths.push_back(entry->view()->width());
    ui::click(tljira::findView<QPushButton>(entry->headViewController()->view(), "logoutButton"));
    ASSERT_TRUE(waitForLoginForm());
    widths.push_back(entry->view()->width());

    EXPECT_THAT(widths, Each(480));
}

TEST_F(SessionCheckTest, hasAServersNameOnSeveralLinesOnlyWhereOneIsTooShort)
{
    openWithoutAnAnswer();
    EXPECT_FALSE(part<QLabel>("connectingLabel")->wordWrap());
    server.release();
    ASSERT_TRUE(waitForBody());

    client->setHost(QStringLiteral("http://%1.example.test/").arg(QString(60, u'm')));
    open();
    EXPECT_TRUE(part<QLabel>("connectingLabel")->wordWrap());
}

/// The window of a user with large letters.
class LargeLettersTest : public SessionCheckTest
{
protected:
    LargeLettersTest()
    {
        QFont large = usual;
        large.setPointSize(24);
        QApplication::setFont(large);
    }
    ~LargeLettersTest() override { QApplication::setFont(usual); }

    const QFont usual = QApplication::font();
};

TEST_F(LargeLettersTest, leaveTheWindowItsWidthWhenTheSessionIsThere)
{
    openWithoutAnAnswer();
    const int before = entry->window()->widget()->width();
    server.release();
    ASSERT_TRUE(waitForBody());
    ASSERT_TRUE(waitUntil([this] { return entry->window()->widget()->size() == entry->view()->size(); }));

    EXPECT_EQ(entry->window()->widget()->width(), before);
    EXPECT_GT(before, 480);
}

TEST_F(LargeLettersTest, needNoMoreThanEachStateHasFromTheBeginning)
{
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    ASSERT_NE(entry->window(), nullptr);
    const QList<QWidget*> states{entry->view(), entry->loginViewContainer(), entry->downloadViewContainer()};
    for (QWidget* state : states) {
        EXPECT_GT(state->width(), 480) << state->objectName().toStdString();
        EXPECT_EQ(state->width(), entry->view()->width()) << state->objectName().toStdString();
        EXPECT_GE(state->height(), tljira::neededSize(state).height()) << state->objectName().toStdString();
    }
}

TEST_F(SessionWindowControllerTest, growsSmoothlyWithANameThatIsHigherThanTheOthers)
{
    logIn();
    server.misbehave(standin::Match::on("/rest/api/2/myself"), standin::Fault().hold(standin::Point::responseHead(0)));
    open();
    ASSERT_TRUE(waitForBody());
    waitForHeldExchange();
    ASSERT_TRUE(waitUntil([this] { return entry->window()->widget()->size() == entry->view()->size(); }));
    QLabel* name = entry->headViewController()->nameLabel();
    ASSERT_TRUE(name->isHidden());
    name->setMinimumHeight(300);
    const QRectF before = entry->window()->frame();
    const QSize shown = entry->window()->widget()->size();
    server.release();
    ASSERT_TRUE(waitUntil([name] { return !name->text().isEmpty(); }));

    EXPECT_GT(entry->window()->frame().height(), before.height());
    EXPECT_GE(entry->view()->height(), tljira::neededSize(entry->view()).height());
    EXPECT_EQ(entry->window()->widget()->size(), shown);
    EXPECT_TRUE(waitUntil([this] { return entry->window()->widget()->size() == entry->view()->size(); }));
}

/// What the user has to fill in is where the keyboard is.
TEST_F(SessionWindowControllerTest, leadsTheKeyboardToTheFirstEmptyField)
{
    client->setHost(address);
    open();
    ASSERT_TRUE(waitForLoginForm());

    EXPECT_EQ(entry->jaLoginWindow()->hostTextField()->text(), address);
    EXPECT_EQ(entry->window()->widget()->focusWidget(), entry->jaLoginWindow()->emailTextField());
}

TEST_F(SessionWindowControllerTest, leadsTheKeyboardPastFieldsThatCannotBeFilledIn)
{
    entry = TLJiraUpload::init();
    ASSERT_NE(entry->window(), nullptr);
    entry->jaLoginWindow()->hostTextField()->hide();
    entry->jaLoginWindow()->emailTextField()->setEnabled(false);
    entry->showWindow();
    ASSERT_TRUE(waitForLoginForm());

    EXPECT_EQ(entry->window()->widget()->focusWidget(), entry->jaLoginWindow()->passwordTextField());
}

TEST_F(SessionWindowControllerTest, leavesTheKeyboardInAContainerThatIsShownAgain)
{
    openDecorated();
    QLineEdit* field = entry->jaLoginWindow()->passwordTextField();
    field->setFocus();
    entry->jaInvalidSession();

    EXPECT_EQ(entry->window()->widget()->focusWidget(), field);
}

} // namespace
