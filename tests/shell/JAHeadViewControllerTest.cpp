#include "shell/JAHeadViewController.h"

#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/views/ElidedLabel.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/View.h"
#include "shell/JALoginWindow.h"
#include "standin/Avatar.h"
#include "tests/client/RecordingDelegate.h"
#include "tests/kit/HearAnswers.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/kit/JiraTest.h"

#include <QBuffer>
#include <QtTest/QTest>

namespace {

using namespace tests;
using namespace testing;
using standin::Fault;
using standin::Match;
using standin::Point;

const std::string userPath = "/rest/api/2/myself";
const std::string avatarPath = "/secure/useravatar";

class JAHeadViewControllerTest : public JiraTest
{
protected:
    explicit JAHeadViewControllerTest(const standin::Options& options = {})
        : JiraTest(options)
        , header(
              JAHeadViewController::initWithNibName(QStringLiteral("JAHeadViewController"), tljira::frameworkBundle()))
        , window(tljira::Window::create(QStringLiteral("Header"), header->view()))
    {
        window->makeKeyAndOrderFront();
    }

    QStringList names() const
    {
        return {header->nameLabel()->text(), header->displayNameLabel()->text(), header->emailLabel()->text()};
    }

    bool waitForAvatar()
    {
        return waitUntil([this] { return !header->avatarImage()->image().isNull(); });
    }

    void fill()
    {
        logIn();
        header->setOkSessionView();
        ASSERT_TRUE(waitForAvatar());
        forgetThePast();
    }

    /// Until whatever other threads were given to do by now is done, and this one has heard of it.
    static void waitForOtherThreads()
    {
        for (int round = 0; round < 50; ++round) {
            bool isBack = false;
            tljira::GlobalQueue::instance().addOperation(
                [&isBack] { tljira::MainQueue::instance().addOperation([&isBack] { isBack = true; }); });
            ASSERT_TRUE(waitUntil([&isBack] { return isBack; }));
        }
    }

    void loadAvatar(const Fault& answer)
    {
        server.misbehave(Match::on(avatarPath), answer);
        header->setAvatarByURL(address + QStringLiteral("secure/useravatar"));
    }

    QPushButton* button(const char* name) const
    {
        return window->widget()->findChild<QPushButton*>(QLatin1String(name));
    }

    std::shared_ptr<JAHeadViewController> header;
    std::shared_ptr<tljira::Window> window;
    const QStringList annasNames{QStringLiteral("anna"), QStringLiteral("Anna Lindqvist"),
                                 QStringLiteral("anna@example.test")};
};

TEST_F(JAHeadViewControllerTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_EQ(header->interfaceProblems(), QStringList());
}

TEST_F(JAHeadViewControllerTest, beginsEmptyAndLookingForASession)
{
    EXPECT_EQ(names(), QStringList({QString(), QString(), QString()}));
    EXPECT_TRUE(header->avatarImage()->image().isNull());
    EXPECT_FALSE(ui::isShown(header->okSessionView()));
    EXPECT_TRUE(header->findSessionProgressIndicator()->isAnimating());
    EXPECT_NE(header->jaLoginWindow(), nullptr);
    EXPECT_EQ(header->okSessionView()->parentWidget(), header->view());
}

TEST_F(JAHeadViewControllerTest, hasTheBackgroundOfItsInterfaceFile)
{
    for (QWidget* view : {header->view(), header->okSessionView()}) {
        const auto* layer = tljira::Layer::layerOf(view);
        ASSERT_NE(layer, nullptr) << view->objectName().toStdString();
        EXPECT_EQ(layer->backgroundColor(), QColor(128, 128, 128, 28));
    }
}

TEST_F(JAHeadViewControllerTest, keepsThePanelAtTheSizeOfTheHeader)
{
    EXPECT_EQ(header->okSessionView()->geometry(), header->view()->rect());
    window->widget()->resize(window->widget()->size() + QSize(100, 20));
    drainMainQueue();

    EXPECT_EQ(header->okSessionView()->geometry(), header->view()->rect());
}

TEST_F(JAHeadViewControllerTest, doesNothingWithoutASession)
{
    client->setHost(address);
    header->setOkSessionView();
    hearAnswers(*client);

    EXPECT_FALSE(ui::isShown(header->okSessionView()));
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(names(), QStringList({QString(), QString(), QString()}));
}

TEST_F(JAHeadViewControllerTest, showsWhoIsLoggedIn)
{
    logIn();
    header->setOkSessionView();
    EXPECT_TRUE(ui::isShown(header->okSessionView()));
    EXPECT_EQ(names(), QStringList({QString(), QString(), QString()}));

    ASSERT_TRUE(waitForAvatar());
    EXPECT_EQ(names(), annasNames);
    EXPECT_EQ(header->avatarImage()->image(), QImage::fromData(QByteArray::fromStdString(standin::avatarPng(48))));
    EXPECT_TRUE(header->findSessionProgressIndicator()->isAnimating());
}

TEST_F(JAHeadViewControllerTest, fetchesTheAvatarUnderTheSession)
{
    logIn();
    header->setOkSessionView();
    ASSERT_TRUE(waitForAvatar());

    ASSERT_EQ(server.requests(avatarPath).size(), 1U);
    EXPECT_THAT(server.requests(avatarPath).at(0).header("Cookie"), HasSubstr("JSESSIONID="));
}

TEST_F(JAHeadViewControllerTest, emptiesTheLabelsWhenTheServerDoesNotSayWhoItIs)
{
    fill();
    server.misbehave(Match::on(userPath), Fault().status(500, "{}", "application/json"));
    header->setOkSessionView();

    ASSERT_TRUE(waitUntil([this] { return header->nameLabel()->text().isEmpty(); }));
    EXPECT_EQ(names(), QStringList({QString(), QString(), QString()}));
    hearAnswers(*client);
    EXPECT_FALSE(header->avatarImage()->image().isNull());
    EXPECT_TRUE(server.requests(avatarPath).empty());
}

class WithoutAddressesTest : public JAHeadViewControllerTest
{
protected:
    WithoutAddressesTest()
        : JAHeadViewControllerTest([] {
            standin::Options options;
            options.emailAddresses = false;
            return options;
        }())
    {
    }
};

TEST_F(WithoutAddressesTest, leavesTheAddressEmptyWhereTheServerHidesIt)
{
    fill();

    EXPECT_EQ(names(), QStringList({QStringLiteral("anna"), QStringLiteral("Anna Lindqvist"), QString()}));
}

TEST_F(JAHeadViewControllerTest, saysOnWhichServerTheUserIs)
{
    fill();
    EXPECT_EQ(tljira::findView<QLabel>(header->view(), "serverLabel")->text(), QStringLiteral("· jira.example.test"));

    server.misbehave(Match::on(userPath), Fault().status(500, "{}", "application/json"));
    header->setOkSessionView();
    ASSERT_TRUE(waitUntil([this] { return header->nameLabel()->text().isEmpty(); }));
    EXPECT_EQ(tljira::findView<QLabel>(header->view(), "serverLabel")->text(), QStringLiteral("jira.example.test"));
}

TEST_F(JAHeadViewControllerTest, hasAPictureForWhoeverHasNone)
{
    const auto* placeholder = tljira::findView<QWidget>(header->view(), "avatarPlaceholder");
    logIn();
    server.misbehave(Match::on(avatarPath), Fault().hold(Point::responseBody(10)));
    header->setOkSessionView();
    waitForHeldExchange();
    EXPECT_TRUE(ui::isOnScreen(placeholder));
    EXPECT_FALSE(ui::isOnScreen(header->avatarImage()));
    server.behave();
    server.release();
    ASSERT_TRUE(waitForAvatar());
    EXPECT_FALSE(ui::isOnScreen(placeholder));
    EXPECT_TRUE(ui::isOnScreen(header->avatarImage()));

    loadAvatar(Fault().status(200, "no picture", "image/png"));
    ASSERT_TRUE(waitUntil([this] { return header->avatarImage()->image().isNull(); }));
    EXPECT_TRUE(ui::isOnScreen(placeholder));
}

TEST_F(JAHeadViewControllerTest, saysThatItAsksWhoTheUserIs)
{
    const auto* label = tljira::findView<QLabel>(header->view(), "lookupLabel");
    const auto* spinner = tljira::findView<tljira::ProgressIndicator>(header->view(), "lookupIndicator");
    logIn();
    server.misbehave(Match::on(userPath), Fault().hold(Point::responseHead(0)));
    header->setOkSessionView();
    waitForHeldExchange();
    EXPECT_TRUE(ui::isOnScreen(label));
    EXPECT_EQ(label->text(), QStringLiteral("Asking who you are…"));
    EXPECT_TRUE(ui::isOnScreen(spinner));
    EXPECT_TRUE(spinner->isAnimating());
    EXPECT_TRUE(ui::isOnScreen(tljira::findView<QWidget>(header->view(), "avatarPlaceholder")));
    EXPECT_FALSE(ui::isOnScreen(header->avatarImage()));
    server.behave();
    server.release();
    ASSERT_TRUE(waitUntil([this] { return !header->nameLabel()->text().isEmpty(); }));
    EXPECT_FALSE(ui::isOnScreen(label));
    EXPECT_FALSE(ui::isOnScreen(spinner));
    EXPECT_FALSE(spinner->isAnimating());

    // The next time the last names stay meanwhile.
    server.misbehave(Match::on(userPath), Fault().hold(Point::responseHead(0)));
    header->setOkSessionView();
    waitForHeldExchange();
    EXPECT_FALSE(ui::isOnScreen(label));
    EXPECT_TRUE(ui::isOnScreen(spinner));
    server.release();
    ASSERT_TRUE(waitUntil([spinner] { return !ui::isOnScreen(spinner); }));
}

TEST_F(JAHeadViewControllerTest, knowsSomebodyWhoHasOneNameAlone)
{
    const auto* label = tljira::findView<QLabel>(header->view(), "lookupLabel");
    const auto* spinner = tljira::findView<tljira::ProgressIndicator>(header->view(), "lookupIndicator");
    logIn();
    for (const char* user : {R"({"name": "anna"})", R"({"displayName": "Anna Lindqvist"})"}) {
        server.misbehave(Match::on(userPath).once(), Fault().status(200, user, "application/json"));
        header->setOkSessionView();
        ASSERT_TRUE(waitUntil([spinner] { return !ui::isOnScreen(spinner); }));
        ASSERT_NE(header->nameLabel()->text().isEmpty(), header->displayNameLabel()->text().isEmpty());
        server.misbehave(Match::on(userPath).once(), Fault().hold(Point::responseHead(0)));
        header->setOkSessionView();
        waitForHeldExchange();
        EXPECT_FALSE(ui::isOnScreen(label)) << user;
        server.release();
        ASSERT_TRUE(waitUntil([spinner] { return !ui::isOnScreen(spinner); }));
    }
}

TEST_F(JAHeadViewControllerTest, isNotEmptiedByAnEarlierQuestionThatEndsLater)
{
    logIn();
    server.misbehave(Match::on(userPath).once(),
                     Fault().status(500, "{}", "application/json").hold(Point::responseHead(0)));
    header->setOkSessionView();
    waitForHeldExchange();
    header->setOkSessionView();
    ASSERT_TRUE(waitForAvatar());
    EXPECT_EQ(names(), annasNames);
    server.release();
    const auto* spinner = tljira::findView<tljira::ProgressIndicator>(header->view(), "lookupIndicator");
    ASSERT_TRUE(waitUntil([spinner] { return !ui::isOnScreen(spinner); }));
    EXPECT_EQ(names(), annasNames);
}

TEST_F(JAHeadViewControllerTest, showsNoAvatarThatWasAskedForBeforeTheLastOne)
{
    logIn();
    server.misbehave(Match::on(avatarPath).once(),
                     Fault().status(200, standin::avatarPng(16), "image/png").hold(Point::responseBody(10)));
    header->setAvatarByURL(address + QStringLiteral("secure/useravatar"));
    waitForHeldExchange();
    header->setAvatarByURL(address + QStringLiteral("secure/useravatar"));
    ASSERT_TRUE(waitForAvatar());
    log.clear();
    server.release();
    ASSERT_TRUE(waitUntil([this] { return !log.lines().filter(QStringLiteral("Error task")).isEmpty(); }));
    drainMainQueue();
    waitForOtherThreads();
    EXPECT_EQ(header->avatarImage()->image().size(), QSize(48, 48));
}

TEST_F(JAHeadViewControllerTest, showsNoAvatarThatIsDecodedAfterAnotherHasBeenAskedFor)
{
    logIn();
    HeldGlobalQueue slowDecoders;
    loadAvatar(Fault().status(200, standin::avatarPng(16), "image/png"));
    ASSERT_TRUE(waitUntil([this] { return !log.lines().filter(QStringLiteral("Error task")).isEmpty(); }));
    drainMainQueue();
    server.behave();
    loadAvatar(Fault().hold(Point::responseBody(10)));
    slowDecoders.letGo();
    waitForOtherThreads();

    EXPECT_TRUE(header->avatarImage()->image().isNull());
    server.behave();
    server.release();
    ASSERT_TRUE(waitForAvatar());
    EXPECT_EQ(header->avatarImage()->image().size(), QSize(48, 48));
}

TEST_F(JAHeadViewControllerTest, offersToLogOutWithoutMuchNoise)
{
    fill();
    EXPECT_TRUE(button("logoutButton")->isFlat());
    EXPECT_FALSE(button("logoutButton")->isDefault());
}

TEST_F(JAHeadViewControllerTest, hidesWhatThePanelCovers)
{
    const auto* waiting = tljira::findView<QLabel>(header->view(), "waitingLabel");
    EXPECT_TRUE(ui::isOnScreen(waiting));
    fill();
    EXPECT_FALSE(ui::isOnScreen(waiting));
    EXPECT_FALSE(header->findSessionProgressIndicator()->isHidden());
    header->setActualView(nullptr);
    EXPECT_TRUE(ui::isOnScreen(waiting));
}

TEST_F(JAHeadViewControllerTest, hidesThePanelForAnotherView)
{
    fill();
    ASSERT_TRUE(ui::isOnScreen(header->okSessionView()));
    auto* other = new QWidget(header->view());
    ASSERT_FALSE(other->isVisible());
    header->setActualView(other);

    EXPECT_FALSE(ui::isOnScreen(header->okSessionView()));
    EXPECT_TRUE(ui::isOnScreen(other));
    EXPECT_TRUE(ui::isOnScreen(tljira::findView<QLabel>(header->view(), "waitingLabel")));
}

TEST_F(JAHeadViewControllerTest, showsNamesAsPlainTextWhateverTheyHold)
{
    for (const QLabel* label : {header->nameLabel(), header->displayNameLabel(), header->emailLabel()})
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
}

TEST_F(JAHeadViewControllerTest, keepsTheAvatarWhenTheNextOneDoesNotCome)
{
    fill();
    const QImage before = header->avatarImage()->image();
    header->setAvatarByURL(deadAddress);
    header->setAvatarByURL(std::nullopt);
    server.misbehave(Match::on(avatarPath), Fault().close(Point::responseBody(10)));
    header->setAvatarByURL(address + QStringLiteral("secure/useravatar"));
    ASSERT_TRUE(waitUntil([this] { return log.lines().filter(QStringLiteral("Error task")).size() >= 3; }));
    drainMainQueue();
    waitForOtherThreads();

    EXPECT_EQ(header->avatarImage()->image(), before);
}

TEST_F(JAHeadViewControllerTest, clearsTheAvatarForBytesThatAreNoPicture)
{
    fill();
    loadAvatar(Fault().status(200, "no picture", "image/png"));

    EXPECT_TRUE(waitUntil([this] { return header->avatarImage()->image().isNull(); }));
}

TEST_F(JAHeadViewControllerTest, clearsTheAvatarForNoBytesAtAll)
{
    fill();
    loadAvatar(Fault().status(204));

    EXPECT_TRUE(waitUntil([this] { return header->avatarImage()->image().isNull(); }));
}

TEST_F(JAHeadViewControllerTest, takesAPictureWhateverTheStatus)
{
    logIn();
    loadAvatar(Fault().status(404, standin::avatarPng(16), "image/png"));

    ASSERT_TRUE(waitForAvatar());
    EXPECT_EQ(header->avatarImage()->image().size(), QSize(16, 16));
}

std::string pictureOf(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data().toStdString();
}

TEST_F(JAHeadViewControllerTest, shrinksAHugePicture)
{
    logIn();
    loadAvatar(Fault().status(200, pictureOf(QSize(3000, 2400)), "image/png"));

    ASSERT_TRUE(waitForAvatar());
    EXPECT_EQ(header->avatarImage()->image().size(), QSize(256, 204));
}

TEST_F(JAHeadViewControllerTest, takesAPictureBeyondItsBoundsForNone)
{
    fill();
    loadAvatar(Fault().status(200, pictureOf(QSize(4097, 10)), "image/png"));

    EXPECT_TRUE(waitUntil([this] { return header->avatarImage()->image().isNull(); }));
}

TEST_F(JAHeadViewControllerTest, decodesPicturesOnAnotherThread)
{
    logIn();
    HeldGlobalQueue slowDecoders;
    header->setAvatarByURL(address + QStringLiteral("secure/useravatar"));
    ASSERT_TRUE(waitUntil([this] { return !log.lines().filter(QStringLiteral("Error task")).isEmpty(); }));
    drainMainQueue();
    EXPECT_TRUE(header->avatarImage()->image().isNull());
    slowDecoders.letGo();

    EXPECT_TRUE(waitForAvatar());
}

TEST_F(JAHeadViewControllerTest, doesNotWaitForAnAvatarThatNeverComes)
{
    server.misbehave(Match::on(avatarPath), Fault().hold(Point::responseBody(10)));
    logIn();
    header->setOkSessionView();
    waitForHeldExchange();

    EXPECT_EQ(names(), annasNames);
    EXPECT_TRUE(header->avatarImage()->image().isNull());
    EXPECT_TRUE(button("logoutButton")->isEnabled());

    const std::weak_ptr<JAHeadViewController> letGo = header;
    window.reset();
    header.reset();
    server.release();
    EXPECT_TRUE(waitUntil([&letGo] { return letGo.expired(); }));
}

TEST_F(JAHeadViewControllerTest, keepsTheLastUserThroughALogout)
{
    fill();
    std::vector<std::string> heard;
    client->setDelegate(std::make_shared<RecordingDelegate>(heard));
    ui::click(button("logoutButton"));
    ASSERT_TRUE(waitUntil([&] { return !heard.empty(); }));
    drainMainQueue();
    EXPECT_THAT(heard, ElementsAre("invalid"));
    client->setDelegate(nullptr);

    EXPECT_EQ(server.lastRequest().method, "DELETE");
    EXPECT_EQ(names(), annasNames);
    EXPECT_FALSE(header->avatarImage()->image().isNull());
    EXPECT_TRUE(ui::isShown(header->okSessionView()));
}

TEST_F(JAHeadViewControllerTest, tellsTheDelegateOfNoFailureThatIsTheServers)
{
    fill();
    std::vector<std::string> heard;
    client->setDelegate(std::make_shared<RecordingDelegate>(heard));
    server.misbehave(Match::on("DELETE", "/rest/auth/1/session"), Fault().status(500, "{}", "application/json"));
    ui::click(button("logoutButton"));
    ASSERT_TRUE(waitUntil([&] { return !heard.empty(); }));
    drainMainQueue();
    EXPECT_THAT(heard, ElementsAre("invalid"));
    client->setDelegate(nullptr);
}

TEST_F(JAHeadViewControllerTest, logsInThroughASheet)
{
    ui::click(button("loginButton"));
    const auto form = header->jaLoginWindow();
    ASSERT_EQ(window->attachedSheet(), form->window());
    ui::type(form->hostTextField(), address);
    ui::type(form->emailTextField(), QStringLiteral("anna"));
    ui::type(form->passwordTextField(), QStringLiteral("secret"));
    ui::click(form->loginButton());

    ASSERT_TRUE(waitForAvatar());
    EXPECT_EQ(window->attachedSheet(), nullptr);
    EXPECT_EQ(names(), annasNames);
    EXPECT_TRUE(ui::isShown(header->okSessionView()));
}

TEST_F(JAHeadViewControllerTest, endsItsSheetAtTheFormsCancel)
{
    for (int time = 0; time < 3; ++time) {
        ui::click(button("loginButton"));
        ASSERT_EQ(window->attachedSheet(), header->jaLoginWindow()->window());
        ui::click(header->jaLoginWindow()->cancelButton());
        EXPECT_EQ(window->attachedSheet(), nullptr);
        EXPECT_TRUE(window->isVisible());
    }
    hearAnswers(*client);
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_FALSE(ui::isShown(header->okSessionView()));
}

TEST_F(JAHeadViewControllerTest, endsItsSheetAtEscape)
{
    ui::click(button("loginButton"));
    drainMainQueue();
    ui::press(header->jaLoginWindow()->window()->widget(), Qt::Key_Escape);

    EXPECT_TRUE(waitUntil([this] { return window->attachedSheet() == nullptr; }));
}

TEST_F(JAHeadViewControllerTest, cannotBeAskedToLogInBehindThePanel)
{
    fill();

    EXPECT_FALSE(ui::isShown(button("loginButton")));
    QTest::keyClick(window->widget(), Qt::Key_L, Qt::AltModifier);
    for (int stop = 0; stop < 5; ++stop) {
        ui::press(window->widget(), Qt::Key_Tab);
        EXPECT_NE(window->widget()->focusWidget(), button("loginButton"));
    }
    drainMainQueue();
    EXPECT_EQ(window->attachedSheet(), nullptr);

    header->setActualView(nullptr);
    EXPECT_TRUE(ui::isShown(button("loginButton")));
}

TEST_F(JAHeadViewControllerTest, ignoresASheetThatEndsWithAnotherCode)
{
    logIn();
    for (const int code : {0, 2, -1, -1000}) {
        header->loginAction();
        ASSERT_EQ(window->attachedSheet(), header->jaLoginWindow()->window());
        window->endSheet(header->jaLoginWindow()->window(), code);
    }
    hearAnswers(*client);

    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_FALSE(ui::isShown(header->okSessionView()));
}

TEST_F(JAHeadViewControllerTest, beginsTheLineWithTheServerWhileTheUserIsNotKnown)
{
    logIn();
    server.misbehave(Match::on(userPath), Fault().hold(Point::responseHead(0)));
    header->setOkSessionView();
    waitForHeldExchange();
    drainMainQueue();
    const auto left = [this](const char* name) {
        const auto* label = tljira::findView<QLabel>(header->view(), name);
        return label->mapTo(header->view(), QPoint(0, 0)).x();
    };
    EXPECT_EQ(left("serverLabel"), left("lookupLabel"));
    server.release();
    ASSERT_TRUE(waitUntil([this] { return !header->nameLabel()->text().isEmpty(); }));
    drainMainQueue();
    EXPECT_EQ(header->nameLabel()->mapTo(header->view(), QPoint(0, 0)).x(), left("displayNameLabel"));
    EXPECT_GT(left("serverLabel"), left("nameLabel"));
}

TEST_F(JAHeadViewControllerTest, givesTheUserTheRoomBesideLogOutWhichStandsAtTheEdge)
{
    fill();
    drainMainQueue();
    for (QLabel* label : {header->displayNameLabel(), header->emailLabel(), header->nameLabel()})
        EXPECT_EQ(qobject_cast<tljira::ElidedLabel*>(label)->shownText(), label->text());
    const auto* logOut = tljira::findView<QPushButton>(header->view(), "logoutButton");
    EXPECT_EQ(header->view()->width() - logOut->mapTo(header->view(), QPoint(logOut->width(), 0)).x(), 20);
}

TEST_F(JAHeadViewControllerTest, keepsNamesLongerThanAddresses)
{
    fill();
    const auto shown = [](QLabel* label) { return qobject_cast<tljira::ElidedLabel*>(label)->shownText(); };
    auto* serverLabel = tljira::findView<QLabel>(header->view(), "serverLabel");
    for (int points = 10;
         shown(header->emailLabel()) == header->emailLabel()->text() || shown(serverLabel) == serverLabel->text();
         points += 2) {
        ASSERT_LT(points, 60);
        QFont font;
        font.setPointSize(points);
        header->view()->window()->setFont(font);
        drainMainQueue();
        EXPECT_EQ(shown(header->displayNameLabel()), header->displayNameLabel()->text()) << points;
        EXPECT_EQ(shown(header->nameLabel()), header->nameLabel()->text()) << points;
    }
}

TEST_F(JAHeadViewControllerTest, hasRoomForItsPanelInAFontThatChangesBeforeItIsInSight)
{
    QFont large = header->view()->font();
    large.setPointSize(40);
    header->view()->window()->setFont(large);
    drainMainQueue();

    EXPECT_FALSE(ui::isShown(header->okSessionView()));
    EXPECT_GE(header->view()->height(), tljira::neededSize(header->okSessionView()).height());
}

TEST_F(JAHeadViewControllerTest, hasRoomForItsPanelInAFontThatChangesWhileItIsInSight)
{
    fill();
    QFont large = header->view()->font();
    large.setPointSize(40);
    header->view()->window()->setFont(large);
    drainMainQueue();

    EXPECT_GE(header->view()->height(), tljira::neededSize(header->okSessionView()).height());
}

} // namespace
