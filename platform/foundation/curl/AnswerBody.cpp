#include "platform/foundation/curl/AnswerBody.h"

namespace tljira {

namespace {

// A server that never stops sending must not take the host down with it.
constexpr qint64 largestBodyInMemory = qint64(512) * 1024 * 1024;

} // namespace

AnswerBody::AnswerBody(Destination destination)
    : m_file(destination == Destination::File ? std::make_unique<TemporaryFile>() : nullptr)
{
}

void AnswerBody::setContentEncoding(const QByteArray& encoding)
{
    const QByteArray name = encoding.trimmed().toLower();
    if (name == "gzip" || name == "x-gzip")
        m_decoder = std::make_unique<GzipDecoder>();
    else if (!name.isEmpty() && name != "identity")
        m_error = makeURLError(URLError::CannotDecodeContentData);
}

bool AnswerBody::append(const char* bytes, std::size_t count)
{
    if (m_error)
        return false;
    if (!m_decoder)
        return keep(bytes, count);
    const bool isDecoded =
        m_decoder->decode(bytes, count, [this](const char* decoded, std::size_t size) { return keep(decoded, size); });
    return isDecoded || fail(makeURLError(URLError::CannotDecodeContentData));
}

bool AnswerBody::finish()
{
    if (m_error)
        return false;
    if (m_decoder && !m_decoder->isComplete())
        return fail(makeURLError(URLError::CannotDecodeContentData));
    if (!m_file)
        return true;
    return openFile() && (m_file->close() || fail(*m_file->error()));
}

bool AnswerBody::keep(const char* bytes, std::size_t count)
{
    m_size += static_cast<qint64>(count);
    if (m_file)
        return openFile() && (m_file->write(bytes, static_cast<qint64>(count)) || fail(*m_file->error()));
    if (m_size > largestBodyInMemory)
        return fail(makeURLError(URLError::DataLengthExceedsMaximum));
    m_bytes.append(bytes, static_cast<qsizetype>(count));
    return true;
}

bool AnswerBody::openFile()
{
    if (!m_isFileOpen)
        m_isFileOpen = m_file->open();
    return m_isFileOpen || fail(*m_file->error());
}

bool AnswerBody::fail(const Error& error)
{
    if (!m_error)
        m_error = error;
    return false;
}

Data AnswerBody::takeData()
{
    return Data(std::move(m_bytes));
}

std::unique_ptr<TemporaryFile> AnswerBody::takeFile()
{
    return std::move(m_file);
}

} // namespace tljira
