#include "platform/toolkit/windows/Retained.h"

#include "platform/foundation/MainQueue.h"

namespace tljira {

void retainUntilNextTurn(std::shared_ptr<void> object)
{
    if (object)
        MainQueue::instance().addOperation([kept = std::move(object)] {});
}

} // namespace tljira
