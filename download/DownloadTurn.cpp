#include "download/DownloadTurn.h"

#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "platform/foundation/MainQueue.h"

#include <utility>

void DownloadTurn::take(Begin begin)
{
    giveUp();
    const auto next = std::make_shared<Begin>(std::move(begin));
    m_waiting = next;
    beginOrWait(next);
}

void DownloadTurn::beginOrWait(const std::shared_ptr<Begin>& next)
{
    if (!*next)
        return;
    const auto& client = JAController::sharedInstance();
    const auto running = client->downloadTask();
    if (!running || running->hasEnded()) {
        std::exchange(*next, nullptr)();
        return;
    }
    client->setDownloadCallBack([next, running, earlier = client->downloadCallBack()](
                                    qint64 count1, qint64 count2, const auto& error, bool finished) {
        client::callIfSet(earlier, count1, count2, error, finished);
        // The ends of other requests come here too. A finished file is put in its place after this call. Whoever waited
        // for the same end may have begun by the time of the operation.
        if (*next && (finished || running->hasEnded()))
            tljira::MainQueue::instance().addOperation([next] { beginOrWait(next); });
    });
    running->cancel();
}

void DownloadTurn::giveUp()
{
    if (const auto waiting = m_waiting.lock())
        *waiting = nullptr;
}
