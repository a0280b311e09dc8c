#include "cli/ArgumentParser.h"
#include "tests/fuzz/Fuzz.h"

/// The words of a command line, one a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    cli::ArgumentParser parser;
    const auto arguments = parser.parse(QStringList{QStringLiteral("tljira")} + fuzz::textOf(data, size).split(u'\n'));
    fuzz::require(arguments.has_value() == parser.error().isEmpty(), "what is refused is told why, and nothing else");
    if (arguments && arguments->request == cli::Arguments::Request::Command)
        fuzz::require(!arguments->command.isEmpty(), "what is accepted says what to do");
    return 0;
}
