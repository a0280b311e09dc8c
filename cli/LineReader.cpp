#include "cli/LineReader.h"

#include <QByteArray>

namespace cli {

namespace {

using tljira::console::Input;

constexpr qsizetype longestLine = 4096;

InputLine lineOf(QByteArray bytes)
{
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    return {InputLine::Kind::Line, QString::fromUtf8(bytes)};
}

} // namespace

InputLine readLine(const Input& input, const tljira::console::InterruptSignal& interrupts)
{
    QByteArray bytes;
    while (bytes.size() <= longestLine) {
        char byte = 0;
        switch (input.read(byte, interrupts)) {
        case Input::Result::Interrupted:
            return {InputLine::Kind::Interrupted, {}};
        case Input::Result::Failed:
            return {InputLine::Kind::Unreadable, {}};
        case Input::Result::End:
            return bytes.isEmpty() ? InputLine() : lineOf(bytes);
        case Input::Result::Byte:
            break;
        }
        if (byte == '\n')
            return lineOf(bytes);
        bytes += byte;
    }
    return {InputLine::Kind::TooLong, {}};
}

} // namespace cli
