#include "tools/tour/Tour.h"

#include "tools/tour/Scenes.h"
#include "tools/tour/Stage.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace tessaloom::tour {

namespace {

QtMessageHandler printAnyway = nullptr;

/// Platforms without a window manager say at every window what they cannot do.
void withoutRemarksOfThePlatform(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support")))
        printAnyway(type, context, text);
}

Step everything(Stage& stage)
{
    co_await InNextTurn();
    co_await uploadTour(stage);
    co_await downloadTour(stage);
    co_await classicTour(stage);
    QApplication::exit();
}

} // namespace

int run(const QString& albumFolder)
{
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));

    printAnyway = qInstallMessageHandler(withoutRemarksOfThePlatform);

    Stage stage(albumFolder);
    Step tour = everything(stage);
    tour.start();
    QApplication::exec();
    std::printf("\n%d checks, %d not as expected; %d pictures in %s\n", stage.journal.checks(),
                stage.journal.differences(), stage.album.pictures(), qPrintable(stage.album.folder()));
    return stage.journal.differences() == 0 ? 0 : 1;
}

} // namespace tessaloom::tour
