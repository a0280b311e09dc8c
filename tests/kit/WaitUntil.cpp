#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace tests {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        if (elapsed.elapsed() > limit.count())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        if (!condition())
            QThread::usleep(200);
    }
    return true;
}

void drainMainQueue()
{
    for (int turn = 0; turn < 20; ++turn)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace tests
