#include "platform/toolkit/windows/HostWindow.h"

#include "platform/toolkit/windows/Alert.h"
#include "platform/toolkit/windows/OpenPanel.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

/// A host whose window is active when ours come up.
class HostWindowTest : public testing::Test
{
protected:
    HostWindowTest()
    {
        host.show();
        activate(host);
    }

    static void activate(QWidget& widget)
    {
        widget.activateWindow();
        ASSERT_TRUE(tests::waitUntil([&] { return widget.isActiveWindow(); }));
    }

    /// No window is active, as when another program is in front.
    static void leaveApplication()
    {
        QWidget passing;
        passing.show();
        activate(passing);
        passing.close();
        ASSERT_TRUE(tests::waitUntil([] { return !QApplication::activeWindow(); }));
    }

    static QWindow* ownerOf(const Window& ours) { return ours.widget()->windowHandle()->transientParent(); }

    QWidget host;
    std::shared_ptr<Window> window = Window::create(QStringLiteral("Ours"), new QWidget);
    std::shared_ptr<Window> other = Window::create(QStringLiteral("Other"), new QWidget);
};

TEST_F(HostWindowTest, aWindowIsADialogOfTheHostsWindow)
{
    window->makeKeyAndOrderFront();

    EXPECT_EQ(ownerOf(*window), host.windowHandle());
    EXPECT_EQ(window->widget()->windowType(), Qt::Dialog);
    EXPECT_FALSE(window->widget()->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_TRUE(window->widget()->windowFlags() & Qt::WindowCloseButtonHint);
}

TEST_F(HostWindowTest, soIsOneThatComesUpWhileAnotherOfOursIsActive)
{
    window->makeKeyAndOrderFront();
    activate(*window->widget());

    other->makeKeyAndOrderFront();

    EXPECT_EQ(ownerOf(*other), host.windowHandle());
}

TEST_F(HostWindowTest, aDialogOfTheHostStandsForTheHostsWindow)
{
    QWidget dialog(&host, Qt::Dialog);
    dialog.show();
    activate(dialog);

    window->makeKeyAndOrderFront();

    EXPECT_EQ(ownerOf(*window), host.windowHandle());
}

TEST_F(HostWindowTest, withoutAWindowOfTheHostItStandsAlone)
{
    host.hide();
    window->makeKeyAndOrderFront();
    EXPECT_EQ(ownerOf(*window), nullptr);
    activate(*window->widget());

    other->makeKeyAndOrderFront();
    EXPECT_EQ(ownerOf(*other), nullptr);
}

TEST_F(HostWindowTest, itStandsAloneOnceTheHostsWindowHasGone)
{
    window->makeKeyAndOrderFront();

    host.close();

    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(ownerOf(*window), nullptr);
}

TEST_F(HostWindowTest, theApplicationGoesOnAsLongAsItIsOpen)
{
    window->makeKeyAndOrderFront();
    int ends = 0;
    bool isOpenWithoutHost = false;
    QObject::connect(qApp, &QApplication::lastWindowClosed, [&] { ++ends; });

    // Only an application that runs tells of its last window.
    QTimer::singleShot(0, [&] {
        host.close();
        tests::drainMainQueue();
        isOpenWithoutHost = ends == 0 && window->isVisible();
        window->close();
    });
    QApplication::exec();

    EXPECT_TRUE(isOpenWithoutHost);
    EXPECT_EQ(ends, 1);
}

TEST_F(HostWindowTest, itChangesOverWhenItIsShownForAnotherWindowOfTheHost)
{
    window->makeKeyAndOrderFront();
    window->close();
    QWidget second;
    second.show();
    activate(second);

    window->makeKeyAndOrderFront();
    EXPECT_EQ(ownerOf(*window), second.windowHandle());

    host.hide();
    EXPECT_EQ(ownerOf(*window), second.windowHandle());
}

TEST_F(HostWindowTest, dialogsBelongToTheActiveWindow)
{
    EXPECT_EQ(dialogParent(), &host);

    window->makeKeyAndOrderFront();
    activate(*window->widget());

    EXPECT_EQ(dialogParent(), window->widget());
}

TEST_F(HostWindowTest, dialogsBelongToTheWindowThatWasActiveLastWhileTheApplicationIsNotInFront)
{
    window->makeKeyAndOrderFront();
    activate(*window->widget());
    leaveApplication();

    EXPECT_EQ(dialogParent(), window->widget());

    window->close();
    EXPECT_EQ(dialogParent(), nullptr);
}

TEST_F(HostWindowTest, alertsAndPanelsForFilesAreSuchDialogs)
{
    window->makeKeyAndOrderFront();
    activate(*window->widget());
    leaveApplication();
    QWidget* alertsParent = nullptr;
    QWidget* panelsParent = nullptr;
    Alert::observeDialogs([&](QMessageBox& box) {
        alertsParent = box.parentWidget();
        box.accept();
    });
    OpenPanel::observeDialogs([&](QFileDialog& dialog) {
        panelsParent = dialog.parentWidget();
        dialog.reject();
    });

    Alert().runModal();
    leaveApplication();
    OpenPanel().runModal();
    Alert::observeDialogs(nullptr);
    OpenPanel::observeDialogs(nullptr);

    EXPECT_EQ(alertsParent, window->widget());
    EXPECT_EQ(panelsParent, window->widget());
}

} // namespace
