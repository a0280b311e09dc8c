#include "client/TransferListener.h"

#include <vector>

namespace client {

namespace {

std::vector<std::weak_ptr<TransferListener>>& listeners()
{
    static auto& all = *new std::vector<std::weak_ptr<TransferListener>>;
    return all;
}

} // namespace

TransferListener::~TransferListener() = default;

void TransferListener::uploadAnswered(const QString&, const std::optional<QJsonValue>&) {}

void TransferListener::downloadArrived(const tljira::URLSessionTask&, const QString&) {}

void TransferListener::taskEnded(const tljira::URLSessionTask&, const std::optional<tljira::Error>&) {}

void TransferListener::add(const std::weak_ptr<TransferListener>& listener)
{
    std::erase_if(listeners(), [](const auto& other) { return other.expired(); });
    listeners().push_back(listener);
}

void TransferListener::tell(const std::function<void(TransferListener&)>& news)
{
    // Who hears it may add another.
    const auto all = listeners();
    for (const auto& weak : all) {
        if (const auto listener = weak.lock())
            news(*listener);
    }
}

} // namespace client
