#include "platform/toolkit/windows/Application.h"

#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"
#include "platform/toolkit/windows/WindowDelegate.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tljira;
using testing::ElementsAre;

class StoppingDelegate : public WindowDelegate
{
public:
    void windowWillClose(Window&) override { Application::stopModal(); }
};

void later(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, std::move(action));
}

void click(QWidget* button)
{
    QTest::mouseClick(button->window()->windowHandle(), Qt::LeftButton, {},
                      button->mapTo(button->window(), QPoint(3, 3)));
}

void pressSpace(QWidget* button)
{
    button->setFocus();
    QTest::keyClick(button->window()->windowHandle(), Qt::Key_Space);
}

class ModalRun : public testing::Test
{
protected:
    ModalRun()
    {
        pretendDecorations(QMargins());
        window->widget()->resize(300, 200);
    }
    ~ModalRun() override { pretendDecorations(std::nullopt); }

    std::shared_ptr<Window> window = Window::create(QStringLiteral("Modal"), new QWidget);
    std::shared_ptr<Window> other = Window::create(QStringLiteral("Other"), new QWidget);
};

TEST_F(ModalRun, showsTheHiddenWindowInTheMiddleAndLeavesItOpen)
{
    bool wasVisible = false;
    later([&] {
        wasVisible = window->isVisible();
        EXPECT_EQ(Application::modalWindow(), window);
        Application::stopModal();
    });

    EXPECT_EQ(Application::runModalForWindow(window), ModalResponse::Stop);

    EXPECT_TRUE(wasVisible);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->widget()->geometry().center(), QGuiApplication::primaryScreen()->availableGeometry().center());
    EXPECT_EQ(Application::modalWindow(), nullptr);
}

TEST_F(ModalRun, centresAWindowThatWasPlacedElsewhereBefore)
{
    window->setFrame(QRectF(0, 0, 300, 200), true);
    later([] { Application::stopModal(); });

    Application::runModalForWindow(window);

    EXPECT_EQ(window->widget()->geometry().center(), QGuiApplication::primaryScreen()->availableGeometry().center());
}

TEST_F(ModalRun, leavesAVisibleWindowWhereItIs)
{
    window->setFrame(QRectF(10, 20, 300, 200), true);
    window->makeKeyAndOrderFront();
    later([] { Application::stopModal(); });

    Application::runModalForWindow(window);

    EXPECT_EQ(window->frame(), QRectF(10, 20, 300, 200));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ModalRun, answersTheCodeItWasStoppedWith)
{
    later([] { Application::stopModal(42); });

    EXPECT_EQ(Application::runModalForWindow(window), 42);
}

TEST_F(ModalRun, ofNoWindowIsOverAtOnce)
{
    EXPECT_EQ(Application::runModalForWindow(nullptr), ModalResponse::Abort);
}

TEST_F(ModalRun, thatDoesNotGoOnCannotBeStopped)
{
    Application::stopModal(5);
    later([] { Application::stopModal(6); });

    EXPECT_EQ(Application::runModalForWindow(window), 6);
}

TEST_F(ModalRun, nestedEndsInnermostFirst)
{
    QList<int> order;
    later([&] {
        later([] { Application::stopModal(1); });
        order.append(Application::runModalForWindow(other));
        EXPECT_EQ(Application::modalWindow(), window);
        later([] { Application::stopModal(2); });
    });

    order.append(Application::runModalForWindow(window));

    EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST_F(ModalRun, stoppedTwiceEndsOneRun)
{
    bool outerWentOn = false;
    later([&] {
        later([] {
            Application::stopModal(1);
            Application::stopModal(2);
        });
        EXPECT_EQ(Application::runModalForWindow(other), 1);
        later([&] {
            outerWentOn = true;
            Application::stopModal(3);
        });
    });

    EXPECT_EQ(Application::runModalForWindow(window), 3);
    EXPECT_TRUE(outerWentOn);
}

TEST_F(ModalRun, ignoresTheUserOfOtherWindowsOnlyWhileItGoesOn)
{
    other->makeKeyAndOrderFront();
    auto* button = new QPushButton(other->contentView());
    button->show();
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
    later([&] {
        click(button);
        EXPECT_EQ(clicks, 0);
        pressSpace(button);
        EXPECT_EQ(clicks, 0);
        Application::stopModal();
    });

    Application::runModalForWindow(window);
    other->makeKeyAndOrderFront();
    click(button);
    EXPECT_EQ(clicks, 1);
    pressSpace(button);
    EXPECT_EQ(clicks, 2);
}

TEST_F(ModalRun, letsTheSheetsOfItsWindowWork)
{
    auto* button = new QPushButton(other->contentView());
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
    later([&] {
        window->beginSheet(other, nullptr);
        button->show();
        click(button);
        window->endSheet(other);
        Application::stopModal();
    });

    Application::runModalForWindow(window);

    EXPECT_EQ(clicks, 1);
}

TEST_F(ModalRun, endsWhenTheUserClosesItsWindowAndTheDelegateStopsIt)
{
    const auto delegate = std::make_shared<StoppingDelegate>();
    window->setDelegate(delegate);
    later([&] { window->widget()->close(); });

    EXPECT_EQ(Application::runModalForWindow(window), ModalResponse::Stop);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ModalRun, endsWhenItsWindowClosesThoughNobodyStopsIt)
{
    later([&] { window->close(); });

    EXPECT_EQ(Application::runModalForWindow(window), ModalResponse::Stop);
}

TEST_F(ModalRun, endsOnceWhenItsWindowClosesAndStopsItInOneGo)
{
    bool outerWentOn = false;
    later([&] {
        later([&] {
            other->close();
            Application::stopModal(9);
        });
        EXPECT_EQ(Application::runModalForWindow(other), ModalResponse::Stop);
        later([&] {
            outerWentOn = true;
            Application::stopModal();
        });
    });

    Application::runModalForWindow(window);

    EXPECT_TRUE(outerWentOn);
}

TEST_F(ModalRun, whoseWindowWasTheLastOneDoesNotQuitTheApplication)
{
    const auto delegate = std::make_shared<StoppingDelegate>();
    window->setDelegate(delegate);
    bool wentOn = false;
    later([&] {
        later([&] { window->widget()->close(); });
        Application::runModalForWindow(window);
        // A quit that the closing had caused would be under way now.
        QTimer::singleShot(50, qApp, [&] {
            wentOn = true;
            QCoreApplication::exit(7);
        });
    });

    EXPECT_EQ(QApplication::exec(), 7);
    EXPECT_TRUE(wentOn);
}

TEST_F(ModalRun, endsWhenTheApplicationQuits)
{
    QList<int> codes;
    later([&] {
        later([&] {
            later([] { QCoreApplication::exit(3); });
            codes.append(Application::runModalForWindow(other));
        });
        codes.append(Application::runModalForWindow(window));
    });

    EXPECT_EQ(QApplication::exec(), 3);

    EXPECT_THAT(codes, ElementsAre(ModalResponse::Abort, ModalResponse::Abort));
}

TEST_F(ModalRun, keepsItsWindowAlive)
{
    const std::weak_ptr<Window> watched = window;
    later([&] {
        window.reset();
        EXPECT_FALSE(watched.expired());
        Application::stopModal();
    });

    Application::runModalForWindow(watched.lock());

    EXPECT_TRUE(watched.expired());
}

} // namespace
