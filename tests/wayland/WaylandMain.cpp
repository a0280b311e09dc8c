#include "tests/kit/PrivateHome.h"
#include "tests/wayland/Compositor.h"
#include "tests/wayland/Seat.h"

#include <QApplication>

#include <gmock/gmock.h>

#include <iostream>

/// Each test has a compositor of its own.
int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    // Its user may not enter the home of this process.
    const tests::Compositor compositor;
    if (!compositor.error().isEmpty()) {
        std::cerr << "There is no compositor to test on: " << compositor.error().toStdString() << '\n';
        return EXIT_FAILURE;
    }
    // There before the windows: they come to know of a keyboard that is plugged in later only in a while.
    tests::Seat::instance();
    const tests::PrivateHome home;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tests"));
    // What is seen is to depend on nothing of this machine.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
