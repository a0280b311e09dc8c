#include "platform/toolkit/windows/WindowController.h"

#include "platform/foundation/Log.h"
#include "platform/toolkit/views/View.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/Forms.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tljira;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class FormController : public WindowController
{
public:
    static std::shared_ptr<FormController> init(const char* nibName = "Form")
    {
        const std::shared_ptr<FormController> self(new FormController);
        self->initWithWindowNibName(QString::fromLatin1(nibName), tests::forms());
        return self;
    }

    QStringList calls;
    std::function<void()> onCancel;
    std::shared_ptr<Window> windowSeenInside;
    QPointer<QWidget> m_view;
    QPointer<QWidget> m_errorView;
    QPointer<QLabel> m_errorTitle;
    QPointer<QLineEdit> m_hostTextField;
    QPointer<QPushButton> m_loginButton;
    QPointer<QWidget> m_lastSender;

protected:
    FormController()
    {
        outlets.bind("view", &m_view);
        outlets.bind("errorView", &m_errorView);
        outlets.bind("errorTitle", &m_errorTitle);
        outlets.bind("hostTextField", &m_hostTextField);
        outlets.bind("loginButton", &m_loginButton);
        actions.bind("loginButtonAction", [this](QWidget* sender) {
            m_lastSender = sender;
            calls.append(QStringLiteral("login"));
        });
        actions.bind("cancelAction", [this] {
            calls.append(QStringLiteral("cancel"));
            if (onCancel)
                onCancel();
            calls.append(QStringLiteral("cancelled"));
        });
        actions.bind("enterAction", [this] { calls.append(QStringLiteral("enter")); });
        actions.bind("strayAction", [] {});
    }

    void windowWillLoad() override
    {
        calls.append(QStringLiteral("windowWillLoad"));
        EXPECT_FALSE(isWindowLoaded());
        EXPECT_FALSE(m_hostTextField);
    }

    void windowDidLoad() override
    {
        calls.append(QStringLiteral("windowDidLoad"));
        EXPECT_TRUE(isWindowLoaded());
        EXPECT_TRUE(m_hostTextField);
        windowSeenInside = window();
    }

    void windowWillClose(Window&) override { calls.append(QStringLiteral("windowWillClose")); }
};

class MistakenController : public WindowController
{
public:
    static std::shared_ptr<MistakenController> init(const char* nibName)
    {
        const std::shared_ptr<MistakenController> self(new MistakenController);
        self->initWithWindowNibName(QString::fromLatin1(nibName), tests::forms());
        return self;
    }

    QPointer<QLabel> m_absentLabel;
    QPointer<QCheckBox> m_loginButton;

protected:
    MistakenController()
    {
        outlets.bind("absentLabel", &m_absentLabel);
        outlets.bind("loginButton", &m_loginButton);
        actions.bind("loginButtonAction", [] {});
        actions.bind("cancelAction", [] {});
        actions.bind("enterAction", [] {});
        actions.bind("absentAction", [] {});
    }
};

TEST(WindowController, loadsNothingBeforeItsWindowIsAskedFor)
{
    const auto controller = FormController::init();

    EXPECT_FALSE(controller->isWindowLoaded());
    EXPECT_EQ(controller->windowIfLoaded(), nullptr);
    EXPECT_THAT(controller->calls, IsEmpty());
}

TEST(WindowController, loadsOnceInOrderAndKnowsItsWindowWhileLoading)
{
    const auto controller = FormController::init();

    const auto window = controller->window();

    EXPECT_THAT(controller->calls, ElementsAre(QStringLiteral("windowWillLoad"), QStringLiteral("windowDidLoad")));
    EXPECT_NE(window, nullptr);
    EXPECT_EQ(controller->windowSeenInside, window);
    EXPECT_EQ(controller->window(), window);
    EXPECT_EQ(controller->calls.size(), 2);
}

TEST(WindowController, makesAWindowOfTheFilesTitleAndSize)
{
    const auto window = FormController::init()->window();

    EXPECT_EQ(window->title(), QStringLiteral("Form title"));
    EXPECT_EQ(window->frame().size(), QSizeF(320, 240));
}

TEST(WindowController, connectsEveryOutletInsideAndOutsideTheWindow)
{
    const auto controller = FormController::init();

    const auto window = controller->window();

    EXPECT_EQ(window->contentView(), controller->m_view);
    EXPECT_EQ(Window::windowOf(controller->m_hostTextField), window);
    ASSERT_TRUE(controller->m_errorView);
    EXPECT_EQ(Window::windowOf(controller->m_errorView), nullptr);
    EXPECT_TRUE(controller->m_errorView->isAncestorOf(controller->m_errorTitle));
    EXPECT_THAT(controller->interfaceProblems(), IsEmpty());
}

TEST(WindowController, showWindowLoadsAndShows)
{
    const auto controller = FormController::init();

    controller->showWindow();

    EXPECT_TRUE(controller->window()->isVisible());
}

TEST(WindowController, runsTheActionsThatItsControlsName)
{
    const auto controller = FormController::init();
    controller->showWindow();
    controller->calls.clear();

    controller->m_loginButton->click();
    EXPECT_EQ(controller->m_lastSender, controller->m_loginButton);
    controller->m_view->findChild<QPushButton*>(QStringLiteral("cancelButton"))->click();

    EXPECT_THAT(controller->calls,
                ElementsAre(QStringLiteral("login"), QStringLiteral("cancel"), QStringLiteral("cancelled")));
}

TEST(WindowController, returnInAFieldRunsItsActionThenTheDefaultButtons)
{
    const auto controller = FormController::init();
    controller->showWindow();
    controller->calls.clear();

    QTest::keyClick(controller->m_hostTextField, Qt::Key_Return);

    EXPECT_THAT(controller->calls, ElementsAre(QStringLiteral("enter"), QStringLiteral("login")));
}

TEST(WindowController, isItsWindowsDelegate)
{
    const auto controller = FormController::init();
    controller->showWindow();
    controller->calls.clear();

    controller->window()->widget()->close();

    EXPECT_THAT(controller->calls, ElementsAre(QStringLiteral("windowWillClose")));
}

TEST(WindowController, mayLoseItsLastOwnerInItsOwnAction)
{
    auto controller = FormController::init();
    const std::weak_ptr<FormController> watched = controller;
    controller->showWindow();
    QPointer<QPushButton> cancel = controller->m_view->findChild<QPushButton*>(QStringLiteral("cancelButton"));
    bool ran = false;
    controller->onCancel = [&] {
        controller.reset();
        ran = true;
    };

    QTest::mouseClick(cancel, Qt::LeftButton);

    EXPECT_TRUE(ran);
    tests::drainMainQueue();
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(cancel);
}

TEST(WindowController, outlivesItsOwnActionThatRunsAnEventLoop)
{
    auto controller = FormController::init();
    const std::weak_ptr<FormController> watched = controller;
    controller->showWindow();
    const QPointer<QPushButton> cancel = controller->m_view->findChild<QPushButton*>(QStringLiteral("cancelButton"));
    bool wasThere = false;
    controller->onCancel = [&] {
        controller.reset();
        tests::drainMainQueue();
        wasThere = !watched.expired() && cancel;
    };

    QTest::mouseClick(cancel, Qt::LeftButton);

    EXPECT_TRUE(wasThere);
    tests::drainMainQueue();
    EXPECT_TRUE(watched.expired());
}

TEST(WindowController, takesItsViewsAlongFromWhereverTheyAre)
{
    QWidget elsewhere;
    auto controller = FormController::init();
    controller->window();
    const QPointer<QWidget> moved = controller->m_view;
    const QPointer<QWidget> apart = controller->m_errorView;
    addSubview(&elsewhere, moved);

    controller.reset();

    EXPECT_FALSE(moved);
    EXPECT_FALSE(apart);
}

TEST(WindowController, losesItsOutletsWithTheWindowTheyWereMovedInto)
{
    const auto controller = FormController::init();
    controller->window();
    {
        QWidget elsewhere;
        addSubview(&elsewhere, controller->m_view);
    }

    EXPECT_FALSE(controller->m_view);
    EXPECT_FALSE(controller->m_hostTextField);
    EXPECT_TRUE(controller->m_errorView);
}

TEST(WindowController, thatGoesEndsTheSheetItsWindowIs)
{
    const auto parent = Window::create();
    parent->makeKeyAndOrderFront();
    auto controller = FormController::init();
    int code = 0;
    parent->beginSheet(controller->window(), [&](int given) { code = given; });

    controller.reset();

    EXPECT_EQ(code, ModalResponse::Stop);
    EXPECT_EQ(parent->attachedSheet(), nullptr);
}

TEST(WindowController, reportsWhatItAndItsFileDisagreeAbout)
{
    const tests::LogCapture log;
    const auto controller = MistakenController::init("Form");

    const auto window = controller->window();

    EXPECT_NE(window->contentView(), nullptr);
    EXPECT_FALSE(controller->m_absentLabel);
    EXPECT_FALSE(controller->m_loginButton);
    EXPECT_THAT(controller->interfaceProblems(),
                UnorderedElementsAre(QStringLiteral("outlet absentLabel"),
                                     QStringLiteral("outlet loginButton (a QCheckBox is needed, found a QPushButton)"),
                                     QStringLiteral("action strayAction"), QStringLiteral("action absentAction")));
    EXPECT_THAT(log.lines(),
                ElementsAre(QStringLiteral(
                    "interface file Form of (anonymous namespace)::MistakenController: outlets missing: absentLabel, "
                    "loginButton (a QCheckBox is needed, found a QPushButton); actions missing: absentAction; actions "
                    "unknown: strayAction")));
}

TEST(WindowController, hasAnEmptyWindowWhenItsFileIsMissingOrBroken)
{
    for (const char* name : {"Nowhere", "Broken"}) {
        const tests::LogCapture log;
        const auto controller = MistakenController::init(name);

        controller->showWindow();

        ASSERT_NE(controller->window(), nullptr);
        EXPECT_TRUE(controller->window()->isVisible());
        EXPECT_EQ(controller->window()->contentView(), nullptr);
        EXPECT_THAT(controller->interfaceProblems(), ElementsAre(QStringLiteral("file ") + QString::fromLatin1(name)));
        EXPECT_EQ(log.lines().size(), 1);
    }
}

TEST(WindowController, describesItselfInTheLogByItsFile)
{
    const tests::LogCapture log;
    const auto controller = FormController::init();

    tljira::log(u"?? %@", controller);
    tljira::log(u"?? %@", std::shared_ptr<FormController>());

    ASSERT_EQ(log.lines().size(), 2);
    EXPECT_EQ(log.lines()[0],
              QStringLiteral("?? <Form: 0x%1>")
                  .arg(QString::number(reinterpret_cast<quintptr>(static_cast<NibOwner*>(controller.get())), 16)));
    EXPECT_EQ(log.lines()[1], QStringLiteral("?? (null)"));
}

} // namespace
