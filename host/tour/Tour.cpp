#include "host/tour/Tour.h"

#include "host/tour/Scenes.h"
#include "host/tour/Stage.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace tessaloom::tour {

namespace {

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
    // The same pictures wherever the tour is taken.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));

    Stage stage(albumFolder);
    Step tour = everything(stage);
    tour.start();
    QApplication::exec();
    std::printf("\n%d checks, %d not as expected; %d pictures in %s\n", stage.journal.checks(),
                stage.journal.differences(), stage.album.pictures(), qPrintable(stage.album.folder()));
    return stage.journal.differences() == 0 ? 0 : 1;
}

} // namespace tessaloom::tour
