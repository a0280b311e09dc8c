#pragma once

#include "platform/foundation/loading/curl/GzipDecoder.h"
#include "platform/foundation/loading/curl/TemporaryFile.h"
#include "platform/foundation/values/Data.h"

#include <memory>
#include <optional>

namespace tljira {

/// Takes the body of an answer as it comes from the wire, unpacks it where it is packed, and keeps it in memory or in a
/// file.
class AnswerBody
{
public:
    enum class Destination { Memory, File };

    explicit AnswerBody(Destination destination);

    ///@{
    /// What the head announced, before the first byte.
    void setContentEncoding(const QByteArray& encoding);
    void setContentType(const QByteArray& type);
    ///@}
    /// Whether more bytes are kept than come.
    bool isPacked() const { return m_decoder != nullptr; }

    /// False when the bytes cannot be kept; `error` then says why.
    bool append(const char* bytes, std::size_t count);
    /// The last byte has come. False as above.
    bool finish();

    /// Bytes kept so far.
    qint64 size() const { return m_size; }
    const std::optional<Error>& error() const { return m_error; }

    Data takeData();
    /// Null where the body was kept in memory.
    std::unique_ptr<TemporaryFile> takeFile();

private:
    bool keep(const char* bytes, std::size_t count);
    bool openFile();
    bool fail(const Error& error);

    /// A server that never stops sending must not take the host down with it.
    int m_mostMebibytesInMemory = 64;
    QByteArray m_bytes;
    std::unique_ptr<TemporaryFile> m_file;
    bool m_isFileOpen = false;
    std::unique_ptr<GzipDecoder> m_decoder;
    qint64 m_size = 0;
    std::optional<Error> m_error;
};

} // namespace tljira
