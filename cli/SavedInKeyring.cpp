#include "cli/SavedInKeyring.h"

#include "records/SavedLogin.h"

#include <algorithm>
#include <string_view>

namespace cli {

std::optional<QString> savedInKeyring()
{
    return tljira::UserDefaults::standardUserDefaults().stringForKey(records::savedInKeyringKey);
}

bool mayAskKeyring(int argc, const char* const* argv)
{
    const auto isKeyring = [](std::string_view word) { return word == "--keyring"; };
    return std::any_of(argv, argv + argc, isKeyring) || savedInKeyring();
}

} // namespace cli
