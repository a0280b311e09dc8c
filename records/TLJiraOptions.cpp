#include "records/TLJiraOptions.h"

#include <mutex>

namespace {

struct Chosen
{
    std::mutex mutex;
    TLJiraOptions options;
};

Chosen& chosen()
{
    // Never destroyed: requests may be made until the last moment of the process.
    static auto& instance = *new Chosen;
    return instance;
}

void dropPoint(QString& extension)
{
    if (extension.startsWith(u'.'))
        extension.remove(0, 1);
}

} // namespace

std::vector<TLJiraOptions::DocumentKind> TLJiraOptions::defaultDocuments()
{
    return {{QStringLiteral("tessaloom"), QStringLiteral("tessaloompacket")}};
}

void TLJiraOptions::use(const TLJiraOptions& options)
{
    TLJiraOptions usable = options;
    for (DocumentKind& kind : usable.documents) {
        dropPoint(kind.extension);
        dropPoint(kind.packetExtension);
    }
    const std::lock_guard lock(chosen().mutex);
    chosen().options = usable;
}

TLJiraOptions TLJiraOptions::inUse()
{
    const std::lock_guard lock(chosen().mutex);
    return chosen().options;
}
