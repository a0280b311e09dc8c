#include "bench/windows/LoopWatch.h"

#include <QAbstractEventDispatcher>

#include <algorithm>

namespace bench {

LoopWatch::LoopWatch()
{
    const QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_left = Clock::now(); });
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { m_longest = std::max<std::chrono::duration<double>>(m_longest, Clock::now() - m_left); });
}

} // namespace bench
