#include "tests/desktop/Desktop.h"
#include "tests/kit/PrivateHome.h"

#include <QApplication>

#include <gmock/gmock.h>

#include <iostream>

/// Each test has a screen and a window manager of its own.
int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const tests::PrivateHome home;
    const tests::Desktop desktop;
    if (!desktop.error().isEmpty()) {
        std::cerr << "There is no desktop to test on: " << desktop.error().toStdString() << '\n';
        return EXIT_FAILURE;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tests"));
    // What is seen is to depend on nothing of this machine.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
