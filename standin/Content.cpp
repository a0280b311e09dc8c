#include "standin/Content.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

namespace standin {

namespace {

class MemoryContent final : public Content
{
public:
    explicit MemoryContent(std::string bytes)
        : m_bytes(std::move(bytes))
    {
    }

    std::int64_t size() const override { return static_cast<std::int64_t>(m_bytes.size()); }

    bool read(std::int64_t offset, char* to, std::size_t length) const override
    {
        std::memcpy(to, m_bytes.data() + offset, length);
        return true;
    }

private:
    std::string m_bytes;
};

class FileContent final : public Content
{
public:
    FileContent(int descriptor, std::int64_t size)
        : m_descriptor(descriptor)
        , m_size(size)
    {
    }
    ~FileContent() override { ::close(m_descriptor); }
    FileContent(const FileContent&) = delete;
    FileContent& operator=(const FileContent&) = delete;

    std::int64_t size() const override { return m_size; }

    bool read(std::int64_t offset, char* to, std::size_t length) const override
    {
        while (length > 0) {
            const ssize_t got = ::pread(m_descriptor, to, length, offset);
            if (got <= 0)
                return false;
            offset += got;
            to += got;
            length -= static_cast<std::size_t>(got);
        }
        return true;
    }

private:
    int m_descriptor;
    std::int64_t m_size;
};

class PatternContent final : public Content
{
public:
    explicit PatternContent(std::int64_t size)
        : m_size(size)
    {
    }

    std::int64_t size() const override { return m_size; }

    bool read(std::int64_t offset, char* to, std::size_t length) const override
    {
        patternBytes(offset, to, length);
        return true;
    }

private:
    std::int64_t m_size;
};

const std::vector<char>& patternPeriod()
{
    static const std::vector<char> period = [] {
        constexpr std::size_t largestPrimeBelowOneMiB = 1048573;
        std::vector<char> bytes(largestPrimeBelowOneMiB);
        std::minstd_rand random(1);
        std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random() >> 8); });
        return bytes;
    }();
    return period;
}

} // namespace

ContentPtr contentOfBytes(std::string bytes)
{
    return std::make_shared<MemoryContent>(std::move(bytes));
}

ContentPtr contentOfFile(int descriptor, std::int64_t size)
{
    return std::make_shared<FileContent>(descriptor, size);
}

ContentPtr contentOfPattern(std::int64_t size)
{
    return std::make_shared<PatternContent>(size);
}

void patternBytes(std::int64_t offset, char* to, std::size_t length)
{
    const auto& period = patternPeriod();
    auto start = static_cast<std::size_t>(offset % static_cast<std::int64_t>(period.size()));
    while (length > 0) {
        const auto piece = std::min(length, period.size() - start);
        std::memcpy(to, period.data() + start, piece);
        to += piece;
        length -= piece;
        start = 0;
    }
}

std::string allBytes(const Content& content)
{
    std::string bytes(static_cast<std::size_t>(content.size()), '\0');
    if (!content.read(0, bytes.data(), bytes.size()))
        bytes.clear();
    return bytes;
}

} // namespace standin
