#include "platform/foundation/loading/curl/AnswerBody.h"

#include <algorithm>

namespace tljira {

namespace {

constexpr int mostMebibytesOfAPicture = 4;

/// Servers also name what is no encoding at all, such as "UTF-8" or "none".
bool isPacking(const QByteArray& encoding)
{
    static constexpr const char* packings[] = {"gzip", "x-gzip", "deflate", "compress", "x-compress",  "br",
                                               "zstd", "dcb",    "dcz",     "exi",      "pack200-gzip"};
    return std::find(std::begin(packings), std::end(packings), encoding) != std::end(packings);
}

} // namespace

AnswerBody::AnswerBody(Destination destination)
    : m_file(destination == Destination::File ? std::make_unique<TemporaryFile>() : nullptr)
{
}

void AnswerBody::setContentEncoding(const QByteArray& encoding)
{
    QByteArrayList packings;
    for (const QByteArray& part : encoding.split(',')) {
        const QByteArray name = part.trimmed().toLower();
        if (isPacking(name))
            packings.append(name);
    }
    if (packings.isEmpty())
        return;
    if (packings.size() == 1 && (packings[0] == "gzip" || packings[0] == "x-gzip"))
        m_decoder = std::make_unique<GzipDecoder>();
    else
        m_error = makeURLError(URLError::CannotDecodeContentData);
}

void AnswerBody::setContentType(const QByteArray& type)
{
    if (type.trimmed().toLower().startsWith("image/"))
        m_mostMebibytesInMemory = mostMebibytesOfAPicture;
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
    const qint64 size = m_size + static_cast<qint64>(count);
    if (m_file) {
        if (!openFile())
            return false;
        if (!m_file->write(bytes, static_cast<qint64>(count)))
            return fail(*m_file->error());
    } else if (size > qint64(m_mostMebibytesInMemory) * 1024 * 1024) {
        return fail(
            makeError(QLatin1String(URLErrorDomain), static_cast<qint64>(URLError::DataLengthExceedsMaximum),
                      QStringLiteral("The server’s answer is larger than %1 MiB.").arg(m_mostMebibytesInMemory)));
    } else {
        m_bytes.append(bytes, static_cast<qsizetype>(count));
    }
    m_size = size;
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
