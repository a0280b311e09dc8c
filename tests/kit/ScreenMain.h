#pragma once

#include <QApplication>

#include <gmock/gmock.h>

#include <iostream>

namespace tests {

/// The main() of a test program that brings a screen of its own, so that each test has one to itself. A `Screen` is
/// there from its construction to its destruction, with private folders for the process, and says in error() why it is
/// not.
template <class Screen>
int runTestsOn(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const Screen screen;
    if (!screen.error().isEmpty()) {
        std::cerr << "There is nothing to test on: " << screen.error().toStdString() << '\n';
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

} // namespace tests
