#include "tests/kit/PrivateHome.h"

#include <gmock/gmock.h>

#ifdef TESTS_WITH_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    const tests::PrivateHome home;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    Application::setApplicationName(QStringLiteral("tests"));
    return RUN_ALL_TESTS();
}
