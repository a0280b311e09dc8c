#include "platform/foundation/loading/curl/BodySource.h"

#include <utility>

namespace tljira {

BodySource::BodySource(const Data& body, std::function<void()> whenReady)
    : m_whenReady(std::move(whenReady))
    , m_reader(body)
    , m_left(body.size())
{
}

BodySource::~BodySource()
{
    if (m_ahead)
        m_ahead->giveUp();
}

qint64 BodySource::read(char* buffer, qint64 capacity)
{
    qint64 count = m_ahead || m_startError ? mustWait : m_reader.readWithoutWaiting(buffer, capacity);
    if (count == mustWait)
        count = readFromDisk(buffer, capacity);
    if (count > 0)
        m_left -= count;
    return count;
}

qint64 BodySource::readFromDisk(char* buffer, qint64 capacity)
{
    if (m_startError)
        return -1;
    if (!m_ahead) {
        auto ahead = std::make_shared<ReadAhead>(m_reader, m_left, m_whenReady);
        if (!ahead->start()) {
            m_startError = makeURLError(URLError::ResourceUnavailable);
            return -1;
        }
        m_ahead = std::move(ahead);
    }
    return m_ahead->read(buffer, capacity);
}

BodySource::Check BodySource::check()
{
    if (m_left > 0)
        return Check::Unchanged;
    if (m_ahead)
        return m_ahead->check();
    // What was in memory to the last byte lies on a disk of this machine, which answers this from memory, too.
    return m_reader.filesAreUnchanged() ? Check::Unchanged : Check::Changed;
}

std::optional<Error> BodySource::error() const
{
    if (m_startError)
        return m_startError;
    return m_ahead ? m_ahead->error() : m_reader.error();
}

} // namespace tljira
