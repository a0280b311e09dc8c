#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

void require(bool holds, const char* sentence)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", sentence);
    std::abort();
}

QByteArray bytesOf(const std::uint8_t* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

QString textOf(const std::uint8_t* data, std::size_t size)
{
    return QString::fromUtf8(bytesOf(data, size));
}

bool hasByteOrderMark(const QByteArray& json)
{
    return json.contains("\xEF\xBB\xBF") || json.toLower().contains("\\ufeff");
}

void inPieces(std::string_view bytes, unsigned seed, std::size_t longest,
              const std::function<void(std::string_view)>& take)
{
    unsigned state = seed;
    while (!bytes.empty()) {
        state = state * 1664525u + 1013904223u;
        const std::size_t length = std::min(bytes.size(), 1 + (state >> 16) % longest);
        take(bytes.substr(0, length));
        bytes.remove_prefix(length);
    }
}

} // namespace fuzz
