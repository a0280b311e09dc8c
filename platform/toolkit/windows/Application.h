#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/windows/ModalResponse.h"

#include <memory>

namespace tljira {

class Window;

/// Modal runs. Main thread only.
class TL_EXPORT Application
{
public:
    /// Shows the window (centred if it was hidden) and runs the event loop until stopModal(); all other windows except
    /// its sheets and dialogs ignore their user meanwhile. Answers the code given to stopModal(), ModalResponse::Abort
    /// if the application quits meanwhile. The window stays open; if it is closed and nobody stops the run, the run
    /// ends with Stop. Closing it never quits the application.
    static int runModalForWindow(const std::shared_ptr<Window>& window);

    /// Ends the innermost run once control is back in its loop. Further calls until then do nothing, as with no run
    /// going.
    static void stopModal(int returnCode = ModalResponse::Stop);

    /// The window of the innermost run, or null.
    static std::shared_ptr<Window> modalWindow();
};

} // namespace tljira
