#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace fuzz {

/// Ends the program, as a sanitizer would, when something does not hold for this input.
void require(bool holds, const char* sentence);

/// The input as bytes that nobody copies.
QByteArray bytesOf(const std::uint8_t* data, std::size_t size);

/// The input as text, as far as it is UTF-8.
QString textOf(const std::uint8_t* data, std::size_t size);

/// Whether there is one in the JSON: Qt drops it where a text begins with it.
bool hasByteOrderMark(const QByteArray& json);

/// Hands the bytes over in pieces of 1 to `longest` bytes, whose lengths depend on `seed` alone.
void inPieces(std::string_view bytes, unsigned seed, std::size_t longest,
              const std::function<void(std::string_view)>& take);

} // namespace fuzz

/// One input, as libFuzzer asks for it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
