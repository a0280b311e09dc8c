#pragma once

#include <functional>
#include <memory>

/// The order of downloads. The client follows one at a time: one that began while another is under way would be handed
/// the other's bytes, and the other's end. Main thread only.
class DownloadTurn
{
public:
    /// Runs `begin` at once where no download of the client is under way. Otherwise cancels that one, and runs `begin`
    /// in a turn of the event loop after its end; the client keeps `begin` until then. Whoever followed the cancelled
    /// download hears of its end. What was waiting here already is given up.
    void take(std::function<void()> begin);

    /// What waits does not begin any more.
    void giveUp();

private:
    using Begin = std::function<void()>;

    static void beginOrWait(const std::shared_ptr<Begin>& next);

    std::weak_ptr<Begin> m_waiting;
};
