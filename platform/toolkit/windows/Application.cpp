#include "platform/toolkit/windows/Application.h"

#include "platform/toolkit/windows/ModalRuns.h"
#include "platform/toolkit/windows/WindowParts.h"

namespace tljira {

int Application::runModalForWindow(const std::shared_ptr<Window>& window)
{
    if (!window)
        return ModalResponse::Abort;
    if (!ModalRuns::isRunning(*window))
        WindowParts::of(*window).setApplicationModal(true);
    const int returnCode = ModalRuns::run(window);
    if (!ModalRuns::isRunning(*window))
        WindowParts::of(*window).setApplicationModal(false);
    return returnCode;
}

void Application::stopModal(int returnCode)
{
    ModalRuns::stopInnermost(returnCode);
}

std::shared_ptr<Window> Application::modalWindow()
{
    return ModalRuns::innermostWindow();
}

} // namespace tljira
