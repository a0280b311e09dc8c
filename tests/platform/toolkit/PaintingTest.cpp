#include "platform/toolkit/views/ImageView.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/kit/WaitUntil.h"

#include <QSemaphore>

#include <gtest/gtest.h>

#include <thread>

namespace {

/// Lets the queue go when the test has waited in vain, so that it fails and does not hang.
class Watchdog
{
public:
    explicit Watchdog(tests::HeldGlobalQueue& held)
        : m_thread([this, &held] {
            m_hadToHelp = !m_isOver.tryAcquire(1, 60'000);
            held.letGo();
        })
    {
    }
    ~Watchdog() { end(); }
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    bool end()
    {
        m_isOver.release();
        if (m_thread.joinable())
            m_thread.join();
        return m_hadToHelp;
    }

private:
    QSemaphore m_isOver;
    bool m_hadToHelp = false;
    std::thread m_thread;
};

TEST(PaintingTest, goesOnWhileEveryThreadOfTheQueueIsHeld)
{
    tests::HeldGlobalQueue held;
    Watchdog watchdog(held);
    // Large enough for Qt to share the work out among threads.
    QImage picture(3000, 2400, QImage::Format_RGB32);
    picture.fill(Qt::red);
    tljira::ImageView view;
    view.resize(1500, 1200);
    view.setImage(picture);
    view.show();
    QImage canvas(view.size(), QImage::Format_RGB32);
    view.render(&canvas);

    EXPECT_FALSE(watchdog.end());
    EXPECT_EQ(canvas.pixelColor(750, 600), QColor(Qt::red));
}

} // namespace
