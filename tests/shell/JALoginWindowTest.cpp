#include "shell/JALoginWindow.h"

#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/PaletteColors.h"
#include "platform/toolkit/views/View.h"
#include "tests/kit/JiraTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QtTest/QTest>

namespace {

using namespace tests;
using namespace testing;
using standin::Fault;
using standin::Match;

/// Defines endLogin(): the form's answer to the end of a login, which only its own request can bring about. The names
/// of private members may be used where a template is instantiated explicitly.
template <auto Member>
struct Ending
{
    friend void endLogin(JALoginWindow& form, const std::shared_ptr<const JALoginObject>& result,
                         const std::optional<tljira::Error>& error)
    {
        (form.*Member)(result, error);
    }
};
template struct Ending<&JALoginWindow::loginEnded>;
void endLogin(JALoginWindow& form, const std::shared_ptr<const JALoginObject>& result,
              const std::optional<tljira::Error>& error);

class JALoginWindowTest : public JiraTest
{
protected:
    JALoginWindowTest() { form->window()->makeKeyAndOrderFront(); }

    void fillIn(const QString& host, const QString& user, const QString& password)
    {
        ui::type(form->hostTextField(), host);
        ui::type(form->emailTextField(), user);
        ui::type(form->passwordTextField(), password);
    }

    void logInWith(const QString& host, const QString& user, const QString& password)
    {
        fillIn(host, user, password);
        ui::click(form->loginButton());
        ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));
    }

    QString error() const { return form->errorLabel()->text(); }

    std::shared_ptr<JALoginWindow> form = JALoginWindow::init();
    const QString anna = QStringLiteral("anna");
    const QString secret = QStringLiteral("secret");
};

TEST_F(JALoginWindowTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_EQ(form->interfaceProblems(), QStringList());
}

TEST_F(JALoginWindowTest, beginsIdle)
{
    EXPECT_TRUE(form->loginButton()->isEnabled());
    EXPECT_FALSE(ui::isShown(form->spiner()));
    EXPECT_EQ(error(), QString());
    EXPECT_EQ(form->hostTextField()->text(), QString());
    EXPECT_EQ(form->hostTextField()->placeholderText(), QStringLiteral("https://jira.example.com"));
    EXPECT_EQ(form->passwordTextField()->echoMode(), QLineEdit::Password);
    EXPECT_EQ(form->window()->widget()->focusWidget(), form->hostTextField());
}

TEST_F(JALoginWindowTest, givesItsButtonAnEdgeAndHidesItsSpinnerWhateverTheInterfaceFileSays)
{
    tljira::observeLoadedViews([](QWidget* view) {
        view->setHidden(false);
        if (auto* button = qobject_cast<QPushButton*>(view))
            button->setFlat(true);
    });
    const auto other = JALoginWindow::init();
    ASSERT_NE(other->window(), nullptr);

    EXPECT_TRUE(other->cancelButton()->isFlat());
    EXPECT_FALSE(other->loginButton()->isFlat());
    EXPECT_TRUE(other->spiner()->isHidden());
}

/// The client never sends a result and an error together; the form does not rely on it.
TEST_F(JALoginWindowTest, showsTheErrorAndEndsItsSheetForAnAnswerWithBoth)
{
    const auto parent = tljira::Window::create(QStringLiteral("Parent"), nullptr);
    std::vector<int> codes;
    form->window()->orderOut();
    parent->makeKeyAndOrderFront();
    parent->beginSheet(form->window(), [&](int code) {
        codes.push_back(code);
        EXPECT_EQ(error(), QStringLiteral("It was odd."));
    });
    form->loginButton()->setEnabled(false);
    endLogin(*form, JALoginObject::initWithDictionary({}),
             tljira::makeError(QStringLiteral("test"), 7, QStringLiteral("It was odd.")));

    EXPECT_THAT(codes, ElementsAre(1));
    EXPECT_EQ(error(), QStringLiteral("It was odd."));
    EXPECT_TRUE(form->loginButton()->isEnabled());
}

TEST_F(JALoginWindowTest, walksWithTheTabKeyThroughFieldsAndButtons)
{
    const QWidget* order[] = {form->emailTextField(), form->passwordTextField(), form->cancelButton(),
                              form->loginButton()};
    form->hostTextField()->setFocus();
    for (const QWidget* next : order) {
        QTest::keyClick(form->window()->widget()->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(form->window()->widget()->focusWidget(), next) << next->objectName().toStdString();
    }
}

TEST_F(JALoginWindowTest, showsThatALoginIsUnderWay)
{
    server.misbehave(Match::on("POST", "/rest/auth/1/session"), Fault().hold(standin::Point::responseHead(0)));
    fillIn(address, anna, secret);
    ui::click(form->loginButton());
    waitForHeldExchange();

    EXPECT_FALSE(form->loginButton()->isEnabled());
    EXPECT_TRUE(ui::isShown(form->spiner()));
    EXPECT_TRUE(form->spiner()->isAnimating());

    QTest::mouseClick(form->loginButton(), Qt::LeftButton);
    ui::press(form->window()->widget(), Qt::Key_Return);
    server.release();
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));

    EXPECT_FALSE(ui::isShown(form->spiner()));
    EXPECT_EQ(server.requests("/rest/auth/1/session").size(), 1U);
}

TEST_F(JALoginWindowTest, leavesTheKeyboardToThePasswordWhileALoginIsUnderWay)
{
    server.misbehave(Match::on("POST", "/rest/auth/1/session"), Fault().hold(standin::Point::responseHead(0)));
    fillIn(address, anna, secret);
    form->loginButton()->setFocus();
    ui::click(form->loginButton());
    waitForHeldExchange();
    EXPECT_EQ(form->window()->widget()->focusWidget(), form->passwordTextField());
    EXPECT_FALSE(form->hostTextField()->hasSelectedText());
    server.release();
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));
}

TEST_F(JALoginWindowTest, sendsWhatIsTyped)
{
    fillIn(address, QStringLiteral(" anna "), QStringLiteral("p\"w "));
    form->passwordTextField()->insert(QStringLiteral("ü"));
    ui::click(form->loginButton());
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));

    EXPECT_EQ(QByteArray::fromStdString(server.lastRequest().body),
              QStringLiteral("{\"password\":\"p\\\"w ü\",\"username\":\" anna \"}").toUtf8());
}

TEST_F(JALoginWindowTest, takesUpNoBlanksAroundAnAddress)
{
    QLineEdit* field = form->hostTextField();
    field->setFocus();
    QGuiApplication::clipboard()->setText(u' ' + address + QStringLiteral("\t \n"));
    QTest::keySequence(field, QKeySequence::Paste);
    EXPECT_EQ(field->text(), address);
    QTest::keyClick(field, Qt::Key_Space);
    QTest::keyClick(field, Qt::Key_Home);
    QTest::keyClick(field, Qt::Key_Space);
    EXPECT_EQ(field->text(), address);
    EXPECT_EQ(field->cursorPosition(), 0);
    // Between two others a blank stays where it is typed, and the next character comes behind it.
    QTest::keyClick(field, Qt::Key_Right);
    QTest::keyClicks(field, QStringLiteral(" x"));
    EXPECT_EQ(field->text(), address.left(1) + QStringLiteral(" x") + address.mid(1));
}

TEST_F(JALoginWindowTest, takesBackWhatWasTypedInAnAddress)
{
    QLineEdit* field = form->hostTextField();
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClicks(field, QStringLiteral("http://jura"));
    QTest::keySequence(field, QKeySequence::Undo);
    EXPECT_EQ(field->text(), QString());
    QTest::keySequence(field, QKeySequence::Redo);
    EXPECT_EQ(field->text(), QStringLiteral("http://jura"));
}

TEST_F(JALoginWindowTest, handsOnWhatStandsInTheFieldUnchanged)
{
    const QString set = u' ' + address + u' ';
    form->hostTextField()->setText(set);
    ui::click(form->loginButton());
    EXPECT_EQ(tljira::UserDefaults::standardUserDefaults().stringForKey(kJiraURL), set);
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));
}

TEST_F(JALoginWindowTest, savesTheAddressAsItIsTyped)
{
    const QString typed = QStringLiteral("http://jira.example.test/with/path");
    logInWith(typed, anna, secret);

    EXPECT_EQ(tljira::UserDefaults::standardUserDefaults().stringForKey(kJiraURL), typed);
    EXPECT_EQ(client->jiraHost(), address);
    EXPECT_THAT(log.lines(), Contains(QStringLiteral("host: ") + typed));
}

TEST_F(JALoginWindowTest, logsInAtTheReturnKey)
{
    fillIn(address, anna, secret);
    ui::press(form->window()->widget(), Qt::Key_Return);

    ASSERT_TRUE(waitUntil([this] { return client->jaSession() != nullptr; }));
    EXPECT_EQ(error(), QString());
}

TEST_F(JALoginWindowTest, tellsOfAWrongPassword)
{
    logInWith(address, anna, QStringLiteral("wrong"));

    EXPECT_EQ(error(), QStringLiteral("Incorrect login or password"));
    EXPECT_THAT(log.lines(), Contains(QStringLiteral("error: <QLabel: errorLabel> The operation couldn’t be completed. "
                                                     "(invalid sessioin error 401.)")));
}

TEST_F(JALoginWindowTest, asksForThePasswordAgainAfterARefusal)
{
    for (QWidget* focused :
         {static_cast<QWidget*>(form->hostTextField()), static_cast<QWidget*>(form->loginButton())}) {
        fillIn(address, anna, QStringLiteral("wrong"));
        focused->setFocus();
        ui::press(form->window()->widget(), Qt::Key_Return);
        ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));

        EXPECT_EQ(form->window()->widget()->focusWidget(), form->passwordTextField());
        EXPECT_EQ(form->passwordTextField()->selectedText(), form->passwordTextField()->text());
        QTest::keyClicks(form->window()->widget()->focusWidget(), secret);
        EXPECT_EQ(form->hostTextField()->text(), address);
        EXPECT_EQ(form->passwordTextField()->text(), secret);
    }
}

TEST_F(JALoginWindowTest, asksForThePasswordAgainAtEveryCodeAboveZero)
{
    const auto focusAfter = [this](qint64 code) {
        form->hostTextField()->setFocus();
        form->showError(tljira::makeError(QStringLiteral("test"), code, QStringLiteral("It was odd.")));
        return form->window()->widget()->focusWidget();
    };
    EXPECT_EQ(focusAfter(1), form->passwordTextField());
    EXPECT_EQ(focusAfter(0), form->hostTextField());
}

TEST_F(JALoginWindowTest, leavesTheKeyboardWhereItIsWhenNoServerAnswers)
{
    fillIn(deadAddress, anna, secret);
    form->hostTextField()->setFocus();
    ui::press(form->window()->widget(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));

    EXPECT_EQ(form->window()->widget()->focusWidget(), form->hostTextField());
}

TEST_F(JALoginWindowTest, tellsOfACaptchaThatHasToBeSolved)
{
    server.requireCaptcha("anna");
    logInWith(address, anna, secret);

    EXPECT_EQ(error(), QStringLiteral("The operation couldn’t be completed. (invalid sessioin error 403.)"));
}

TEST_F(JALoginWindowTest, tellsOfAPageInsteadOfAnAnswer)
{
    server.misbehave({}, Fault().status(503, "<html>Maintenance</html>", "text/html"));
    logInWith(address, anna, secret);

    EXPECT_EQ(error(), QStringLiteral("The operation couldn’t be completed. (invalid sessioin error 503.)"));
}

TEST_F(JALoginWindowTest, takesAnyAnswerWithStatus200ForALogin)
{
    server.misbehave({}, Fault().status(200, "<html>Welcome</html>", "text/html"));
    logInWith(address, anna, secret);

    EXPECT_EQ(error(), QString());
    EXPECT_NE(client->jaSession(), nullptr);
}

TEST_F(JALoginWindowTest, tellsOfAServerThatIsDown)
{
    logInWith(deadAddress, anna, secret);

    EXPECT_EQ(error(), QStringLiteral("Could not connect to the server."));
}

TEST_F(JALoginWindowTest, sendsEmptyFieldsAsTheyAre)
{
    logInWith(address, QString(), QString());

    EXPECT_EQ(server.lastRequest().body, R"({"password":"","username":""})");
    EXPECT_EQ(error(), QStringLiteral("Incorrect login or password"));
}

TEST_F(JALoginWindowTest, tellsOfAnEmptyAddress)
{
    logInWith(QString(), anna, secret);

    EXPECT_EQ(error(), QStringLiteral("unsupported URL"));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(JALoginWindowTest, tellsOfAnAddressWithoutAScheme)
{
    logInWith(QStringLiteral("jira.example.test"), anna, secret);

    EXPECT_EQ(error(), QStringLiteral("unsupported URL"));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(JALoginWindowTest, keepsTheErrorThroughTheNextLogin)
{
    logInWith(address, anna, QStringLiteral("wrong"));
    ui::type(form->passwordTextField(), secret);
    ui::click(form->loginButton());
    EXPECT_EQ(error(), QStringLiteral("Incorrect login or password"));
    ASSERT_TRUE(waitUntil([this] { return client->jaSession() != nullptr; }));
    drainMainQueue();

    EXPECT_EQ(error(), QStringLiteral("Incorrect login or password"));
}

TEST_F(JALoginWindowTest, showsErrorsAsPlainTextThatCanBeCopied)
{
    EXPECT_EQ(form->errorLabel()->textFormat(), Qt::PlainText);
    EXPECT_TRUE(form->errorLabel()->wordWrap());
    EXPECT_TRUE(form->errorLabel()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
}

TEST_F(JALoginWindowTest, livesUntilItsLoginHasEnded)
{
    const std::weak_ptr<JALoginWindow> letGo = form;
    server.misbehave({}, Fault().hold(standin::Point::responseHead(0)));
    fillIn(address, anna, secret);
    ui::click(form->loginButton());
    waitForHeldExchange();
    form.reset();
    drainMainQueue();
    EXPECT_FALSE(letGo.expired());
    server.release();

    EXPECT_TRUE(waitUntil([&letGo] { return letGo.expired(); }));
}

TEST_F(JALoginWindowTest, fillsInTheAddressThatIsSaved)
{
    const QString typed = QStringLiteral("http://jira.example.test/with/path");
    client->setHost(typed);
    const auto another = JALoginWindow::init();
    another->window()->makeKeyAndOrderFront();

    EXPECT_EQ(another->hostTextField()->text(), typed);
    EXPECT_EQ(another->window()->widget()->focusWidget(), another->emailTextField());
}

TEST_F(JALoginWindowTest, saysBelowTheAddressWhatOfItCounts)
{
    const auto* help = tljira::findView<QLabel>(form->view(), "hostHelp");

    ASSERT_TRUE(ui::isOnScreen(help));
    EXPECT_EQ(help->text(), QStringLiteral("Of the address, scheme and host count"));
    EXPECT_GE(help->y(), form->hostTextField()->geometry().bottom());
    EXPECT_LT(help->y(), form->emailTextField()->y());
    EXPECT_EQ(form->hostTextField()->accessibleDescription(), help->text());
}

TEST_F(JALoginWindowTest, keepsItsFieldsWhileALoginIsUnderWay)
{
    server.misbehave(Match::on("POST", "/rest/auth/1/session"), Fault().hold(standin::Point::responseHead(0)));
    fillIn(address, anna, secret);
    ui::click(form->loginButton());
    waitForHeldExchange();
    for (QLineEdit* field : {form->hostTextField(), form->emailTextField(), form->passwordTextField()}) {
        const QString before = field->text();
        QTest::keyClicks(field, QStringLiteral("x"));
        EXPECT_EQ(field->text(), before) << field->objectName().toStdString();
        EXPECT_EQ(field->palette().color(QPalette::Base), form->view()->palette().color(QPalette::Window));
        EXPECT_EQ(field->palette().color(QPalette::Text), tljira::quietColor(form->view()->palette()));
    }
    server.release();
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));

    for (QLineEdit* field : {form->hostTextField(), form->emailTextField(), form->passwordTextField()}) {
        EXPECT_FALSE(field->isReadOnly()) << field->objectName().toStdString();
        EXPECT_EQ(field->palette().color(QPalette::Base), form->view()->palette().color(QPalette::Base));
        EXPECT_EQ(field->palette().color(QPalette::Text), form->view()->palette().color(QPalette::Text));
    }
}

TEST_F(JALoginWindowTest, spinsBesideItsButtonWhileALoginIsUnderWay)
{
    server.misbehave(Match::on("POST", "/rest/auth/1/session"), Fault().hold(standin::Point::responseHead(0)));
    fillIn(address, anna, secret);
    ui::click(form->loginButton());
    waitForHeldExchange();
    drainMainQueue();

    EXPECT_LE(form->spiner()->geometry().right(), form->cancelButton()->x());
    EXPECT_LT(std::abs(form->spiner()->geometry().center().y() - form->loginButton()->geometry().center().y()), 3);
    server.release();
    ASSERT_TRUE(waitUntil([this] { return form->loginButton()->isEnabled(); }));
}

TEST_F(JALoginWindowTest, showsAnErrorBelowThePasswordAndOnlyThen)
{
    auto* line = tljira::findView<tljira::MessageLine>(form->view(), "errorLine");
    QStringList announced;
    QObject::connect(line, &tljira::MessageLine::announced, line,
                     [&announced](const QString& words) { announced.append(words); });
    EXPECT_FALSE(ui::isOnScreen(line));
    const QRectF before = form->window()->frame();
    logInWith(address, anna, QStringLiteral("wrong"));

    EXPECT_TRUE(ui::isOnScreen(line));
    EXPECT_TRUE(line->isAncestorOf(form->errorLabel()));
    EXPECT_GE(line->y(), form->passwordTextField()->geometry().bottom());
    EXPECT_LE(line->geometry().bottom(), form->loginButton()->y());
    EXPECT_THAT(announced, ElementsAre(QStringLiteral("Incorrect login or password")));
    EXPECT_GT(form->window()->frame().height(), before.height());
    EXPECT_EQ(form->window()->frame().bottom(), before.bottom());
}

TEST_F(JALoginWindowTest, growsSmoothlyForAnError)
{
    drainMainQueue();
    const QSize before = form->window()->widget()->size();
    form->showError(tljira::makeError(QStringLiteral("test"), 7, QStringLiteral("It was odd.")));
    const int height = form->window()->contentView()->height();

    EXPECT_GT(height, before.height());
    EXPECT_EQ(form->window()->widget()->size(), before);
    EXPECT_TRUE(waitUntil([&] { return form->window()->widget()->height() == height; }));
}

/// The form as the sheet of another window.
class LoginSheetTest : public JALoginWindowTest
{
protected:
    LoginSheetTest()
    {
        form->window()->orderOut();
        parent->makeKeyAndOrderFront();
        parent->beginSheet(form->window(), [this](int code) { codes.push_back(code); });
    }

    const std::shared_ptr<tljira::Window> parent = tljira::Window::create(QStringLiteral("Parent"), nullptr);
    std::vector<int> codes;
};

TEST_F(LoginSheetTest, endsWithCodeOneAfterALogin)
{
    logInWith(address, anna, secret);

    EXPECT_THAT(codes, ElementsAre(1));
    EXPECT_FALSE(form->window()->isVisible());
}

TEST_F(LoginSheetTest, staysUpAfterAFailure)
{
    logInWith(address, anna, QStringLiteral("wrong"));

    EXPECT_THAT(codes, IsEmpty());
    EXPECT_TRUE(form->window()->isVisible());
}

TEST_F(LoginSheetTest, isNotEndedByItsOwnCancelButton)
{
    ui::click(form->cancelButton());

    EXPECT_THAT(codes, IsEmpty());
    EXPECT_TRUE(form->window()->isVisible());
}

TEST_F(JALoginWindowTest, endsTheSheetThatItsParentWindowIs)
{
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    const auto entry = tljira::Window::create(QStringLiteral("Entry"), nullptr);
    entry->addChildWindow(form->window(), tljira::Window::Ordered::Below);
    std::vector<int> codes;
    host->makeKeyAndOrderFront();
    host->beginSheet(entry, [&codes](int code) { codes.push_back(code); });
    form->cancelAction();

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(JALoginWindowTest, cancelsNothingWhereNothingIsASheet)
{
    const auto entry = tljira::Window::create(QStringLiteral("Entry"), nullptr);
    entry->makeKeyAndOrderFront();
    ui::click(form->cancelButton());
    entry->addChildWindow(form->window(), tljira::Window::Ordered::Below);
    form->cancelAction();

    EXPECT_TRUE(entry->isVisible());
}

} // namespace
