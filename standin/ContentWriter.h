#pragma once

#include "standin/Content.h"
#include "standin/Digester.h"
#include "standin/Options.h"

#include <string>
#include <string_view>

namespace standin {

/// Takes an uploaded file as it comes: in memory while it is small, in a temporary file without a name beyond that, or
/// nowhere at all.
class ContentWriter
{
public:
    ContentWriter(Storage storage, Digest digest);
    ~ContentWriter();
    ContentWriter(ContentWriter&& other) noexcept;

    void add(std::string_view bytes);
    /// Forgets the bytes; from now on they are only counted.
    void discard();

    std::int64_t size() const { return m_size; }
    /// False once the disk has refused bytes.
    bool isGood() const { return m_isGood; }

    /// Null when the bytes were not kept. Nothing can be added after finish or digest.
    ContentPtr finish();
    std::string digest() { return m_digester.finish(); }

private:
    void addToFile(std::string_view bytes);

    bool m_keeps;
    bool m_isGood = true;
    std::int64_t m_size = 0;
    std::string m_memory;
    int m_descriptor = -1;
    Digester m_digester;
};

} // namespace standin
