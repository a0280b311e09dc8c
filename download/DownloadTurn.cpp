#include "download/DownloadTurn.h"

#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "platform/foundation/MainQueue.h"

#include <utility>

void DownloadTurn::take(Begin begin)
{
    giveUp();
    const auto& client = JAController::sharedInstance();
    const auto running = client->downloadTask();
    if (!running || running->hasEnded()) {
        begin();
        return;
    }
    const auto next = std::make_shared<Begin>(std::move(begin));
    m_waiting = next;
    client->setDownloadCallBack([next, running, earlier = client->downloadCallBack()](
                                    qint64 count1, qint64 count2, const auto& error, bool finished) {
        client::callIfSet(earlier, count1, count2, error, finished);
        // The ends of other requests come here too. A finished file is put in its place after this call.
        if (*next && (finished || running->hasEnded()))
            tljira::MainQueue::instance().addOperation([next] {
                if (const Begin ready = std::exchange(*next, nullptr))
                    ready();
            });
    });
    running->cancel();
}

void DownloadTurn::giveUp()
{
    if (const auto waiting = m_waiting.lock())
        *waiting = nullptr;
}
