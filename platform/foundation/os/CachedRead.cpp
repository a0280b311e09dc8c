#include "platform/foundation/os/CachedRead.h"

#include <algorithm>
#include <sys/uio.h>

namespace tljira::os {

qint64 readCached(int descriptor, qint64 position, char* buffer, qint64 capacity)
{
#ifdef RWF_NOWAIT
    const iovec target = {buffer, static_cast<std::size_t>(capacity)};
    return std::max<qint64>(preadv2(descriptor, &target, 1, position, RWF_NOWAIT), 0);
#else
    Q_UNUSED(descriptor)
    Q_UNUSED(position)
    Q_UNUSED(buffer)
    Q_UNUSED(capacity)
    return 0;
#endif
}

} // namespace tljira::os
