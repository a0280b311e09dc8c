#include "bench/windows/FirstFrame.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>

#include <chrono>
#include <stdexcept>

namespace bench {

namespace {

class PaintWatch : public QObject
{
public:
    bool hasPainted = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        hasPainted = hasPainted || event->type() == QEvent::Paint;
        return false;
    }
};

} // namespace

double secondsToFirstFrame(const std::function<QWidget*()>& open)
{
    const auto begin = std::chrono::steady_clock::now();
    QWidget* window = open();
    PaintWatch watch;
    window->installEventFilter(&watch);
    while (!watch.hasPainted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void runUntil(const std::function<bool()>& condition)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (elapsed.elapsed() > 300'000)
            throw std::runtime_error("a window did not get to its end");
    }
}

} // namespace bench
