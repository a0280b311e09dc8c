#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace standin {

/// Bytes that can be read at any place and do not change.
class Content
{
public:
    virtual ~Content() = default;
    virtual std::int64_t size() const = 0;
    /// Fills `to` with the bytes from `offset` on. The whole range lies inside; false when it cannot be read.
    virtual bool read(std::int64_t offset, char* to, std::size_t length) const = 0;
};

using ContentPtr = std::shared_ptr<const Content>;

ContentPtr contentOfBytes(std::string bytes);
/// Takes the descriptor over.
ContentPtr contentOfFile(int descriptor, std::int64_t size);
/// Bytes that depend on nothing but their offset; see patternBytes.
ContentPtr contentOfPattern(std::int64_t size);

/// The bytes of the pattern from `offset` on. It repeats after a prime number of bytes, so that pieces of a usual block
/// size put together in the wrong order are noticed.
void patternBytes(std::int64_t offset, char* to, std::size_t length);

/// All of it, or an empty text when it cannot be read.
std::string allBytes(const Content& content);

} // namespace standin
