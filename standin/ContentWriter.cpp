#include "standin/ContentWriter.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace standin {

namespace {

constexpr std::size_t mostInMemory = 1 << 20;

int openNamelessFile()
{
    std::error_code error;
    const auto folder = std::filesystem::temp_directory_path(error);
    if (error)
        return -1;
    std::string name = folder / "standin-XXXXXX";
    const int descriptor = ::mkstemp(name.data());
    if (descriptor >= 0)
        ::unlink(name.c_str());
    return descriptor;
}

} // namespace

ContentWriter::ContentWriter(Storage storage, Digest digest)
    : m_keeps(storage == Storage::keep)
    , m_digester(digest)
{
}

ContentWriter::~ContentWriter()
{
    discard();
}

ContentWriter::ContentWriter(ContentWriter&& other) noexcept
    : m_keeps(other.m_keeps)
    , m_isGood(other.m_isGood)
    , m_size(other.m_size)
    , m_memory(std::move(other.m_memory))
    , m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_digester(std::move(other.m_digester))
{
}

void ContentWriter::add(std::string_view bytes)
{
    m_size += static_cast<std::int64_t>(bytes.size());
    m_digester.add(bytes);
    if (!m_keeps)
        return;
    if (m_descriptor < 0 && m_memory.size() + bytes.size() <= mostInMemory) {
        m_memory += bytes;
        return;
    }
    if (m_descriptor < 0) {
        m_descriptor = openNamelessFile();
        addToFile(std::exchange(m_memory, {}));
    }
    addToFile(bytes);
}

void ContentWriter::addToFile(std::string_view bytes)
{
    while (!bytes.empty() && m_isGood) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else
            m_isGood = false;
    }
}

void ContentWriter::discard()
{
    m_keeps = false;
    m_memory = {};
    if (m_descriptor >= 0)
        ::close(std::exchange(m_descriptor, -1));
}

ContentPtr ContentWriter::finish()
{
    if (!m_keeps || !m_isGood)
        return nullptr;
    if (m_descriptor >= 0)
        return contentOfFile(std::exchange(m_descriptor, -1), m_size);
    return contentOfBytes(std::move(m_memory));
}

} // namespace standin
