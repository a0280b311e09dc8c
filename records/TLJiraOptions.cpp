#include "records/TLJiraOptions.h"

#include "platform/foundation/Log.h"

#include <mutex>
#include <utility>

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

TLJiraOptions::Log::Log(Place place, Secrets secrets, std::shared_ptr<const Function> function)
    : m_place(place)
    , m_secrets(secrets)
    , m_function(std::move(function))
{
}

TLJiraOptions::Log TLJiraOptions::Log::off()
{
    return {Place::Nowhere, Secrets::Blanked};
}

TLJiraOptions::Log TLJiraOptions::Log::on(Secrets secrets)
{
    return {Place::Category, secrets};
}

TLJiraOptions::Log TLJiraOptions::Log::to(const Function& function, Secrets secrets)
{
    return function ? Log(Place::Function, secrets, std::make_shared<const Function>(function)) : off();
}

void TLJiraOptions::Log::apply() const
{
    using Target = tljira::LogSettings::Target;
    const Target target = m_place == Place::Function  ? Target::Function
                          : m_place == Place::Nowhere ? Target::Nowhere
                                                      : Target::Category;
    tljira::setLogSettings({target, m_function, m_secrets == Secrets::Shown});
}

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
    {
        const std::lock_guard lock(chosen().mutex);
        chosen().options = usable;
    }
    usable.log.apply();
}

TLJiraOptions TLJiraOptions::inUse()
{
    const std::lock_guard lock(chosen().mutex);
    return chosen().options;
}
