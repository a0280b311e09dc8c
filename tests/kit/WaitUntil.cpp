#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace tests {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    QElapsedTimer elapsed;
    elapsed.start();
    for (;;) {
        // A condition that has come true is not asked again: one that takes what it waits for is true only once.
        if (condition())
            return true;
        if (elapsed.elapsed() > limit.count())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        if (condition())
            return true;
        QThread::usleep(200);
    }
}

void drainMainQueue()
{
    for (int turn = 0; turn < 20; ++turn)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace tests
