#include "standin/Avatar.h"

#include <zlib.h>

#include <cstdint>
#include <string_view>

namespace standin {

namespace {

std::string bigEndian(std::uint32_t number)
{
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes += static_cast<char>(number >> shift & 0xff);
    return bytes;
}

std::string chunk(std::string_view type, const std::string& data)
{
    const std::string checked = std::string(type) + data;
    const auto crc = crc32_z(0, reinterpret_cast<const Bytef*>(checked.data()), checked.size());
    return bigEndian(static_cast<std::uint32_t>(data.size())) + checked + bigEndian(static_cast<std::uint32_t>(crc));
}

std::string compressed(const std::string& bytes)
{
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::string result(size, '\0');
    compress2(reinterpret_cast<Bytef*>(result.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
              static_cast<uLong>(bytes.size()), Z_BEST_COMPRESSION);
    result.resize(size);
    return result;
}

/// A light disc on a blue ground, each row preceded by its filter type.
std::string pixels(int size)
{
    std::string rows;
    for (int y = 0; y < size; ++y) {
        rows += '\0';
        for (int x = 0; x < size; ++x) {
            const int dx = 2 * x + 1 - size;
            const int dy = 2 * y + 1 - size;
            const bool isInside = 16 * (dx * dx + dy * dy) < 9 * size * size;
            rows += isInside ? std::string("\xf4\xf5\xf7", 3) : std::string("\x36\x66\xae", 3);
        }
    }
    return rows;
}

} // namespace

std::string avatarPng(int size)
{
    const auto side = bigEndian(static_cast<std::uint32_t>(size));
    const std::string eightBitRgb("\x08\x02\x00\x00\x00", 5);
    return std::string("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", side + side + eightBitRgb) +
           chunk("IDAT", compressed(pixels(size))) + chunk("IEND", {});
}

} // namespace standin
