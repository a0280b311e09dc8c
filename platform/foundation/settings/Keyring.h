#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <functional>
#include <optional>

namespace tljira {

/// The one text that this application keeps in the desktop's keyring, below its own name. The keyring may ask the user
/// to unlock it, for as long as the user likes, so every answer comes by a callback: once, on the main thread, in a
/// later turn of its event loop. What is asked for is done in that order. What has no answer yet when the application
/// object goes gets none. Main thread only.
class Keyring
{
public:
    /// Domain of its errors; their codes are those of Problem.
    static constexpr char errorDomain[] = "keyring";

    /// Negative, as the transport's codes are: those of an HTTP answer are positive.
    enum class Problem : qint64 {
        NotBuiltIn = -1,
        WrongEventLoop = -2, ///< the library waits for the keyring in GLib's
        Unreachable = -3,
        Locked = -4,
        NotFound = -5, ///< there is none, or the keyring is locked: it does not tell one from the other
        NotRemoved = -6,
        NotLoaded = -7 ///< the file with the library is missing, or cannot be used
    };

    using Read = std::function<void(const std::optional<QString>& text, const std::optional<Error>& error)>;
    using Done = std::function<void(const std::optional<Error>& error)>;

    static void read(const Read& callBack);
    /// Takes the place of an earlier text.
    static void write(const QString& text, const Done& callBack);
    /// None is there afterwards. A text that is not there is no error.
    static void remove(const Done& callBack);

    /// The sentence for users alone, and what the library said; both are parts of the error's description.
    TL_EXPORT static QString sentenceOf(const Error& error);
    TL_EXPORT static QString detailOf(const Error& error);

private:
    static Error makeError(Problem problem, const QString& detail = {});
};

} // namespace tljira
