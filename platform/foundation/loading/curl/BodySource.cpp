#include "platform/foundation/loading/curl/BodySource.h"

#include <utility>

namespace tljira {

BodySource::BodySource(const Data& body, std::function<void()> whenReady)
    : m_inMemory(body)
    , m_left(body.size())
{
    if (!m_inMemory.readsFiles())
        return;
    m_ahead = std::make_shared<ReadAhead>(body, std::move(whenReady));
    if (!m_ahead->start())
        m_startError = makeURLError(URLError::ResourceUnavailable);
}

BodySource::~BodySource()
{
    if (m_ahead)
        m_ahead->giveUp();
}

qint64 BodySource::read(char* buffer, qint64 capacity)
{
    if (m_startError)
        return -1;
    const qint64 count = m_ahead ? m_ahead->read(buffer, capacity) : m_inMemory.read(buffer, capacity);
    if (count > 0)
        m_left -= count;
    return count;
}

BodySource::Check BodySource::check()
{
    return m_ahead && m_left == 0 ? m_ahead->check() : Check::Unchanged;
}

std::optional<Error> BodySource::error() const
{
    if (m_startError)
        return m_startError;
    return m_ahead ? m_ahead->error() : m_inMemory.error();
}

} // namespace tljira
