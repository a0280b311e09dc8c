#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <optional>

/// Whoever shows the state of the session. All calls come on the main thread.
class TL_EXPORT JAControllerDelegate
{
public:
    virtual ~JAControllerDelegate();

    /// A login or a check of the session has just succeeded.
    virtual void jaValidSession() = 0;
    /// A check of the session failed, a login was refused or a logout ended.
    virtual void jaInvalidSession() = 0;

    ///@{
    /// Never called by the client; for delegates that pass the news on among themselves.
    virtual void jaControlleLoginCompletion(bool /*success*/, const std::optional<tljira::Error>& /*error*/) {}
    virtual void jaControlleLogoutCompletion(bool /*success*/, const std::optional<tljira::Error>& /*error*/) {}
    ///@}
};
