#include "platform/toolkit/windows/ModalRuns.h"

#include "platform/toolkit/windows/Window.h"

#include <algorithm>

namespace tljira {

void ModalRuns::Run::stop(int code)
{
    if (isStopped)
        return;
    isStopped = true;
    returnCode = code;
    loop.exit();
}

std::vector<ModalRuns::Run*>& ModalRuns::runs()
{
    static std::vector<Run*> all;
    return all;
}

int ModalRuns::run(const std::shared_ptr<Window>& window)
{
    Run run;
    run.window = window;
    runs().push_back(&run);
    if (!window->isVisible())
        window->center();
    window->makeKeyAndOrderFront();
    if (!run.isStopped)
        run.loop.exec();
    runs().pop_back();
    return run.isStopped ? run.returnCode : ModalResponse::Abort;
}

void ModalRuns::stopInnermost(int returnCode)
{
    if (!runs().empty())
        runs().back()->stop(returnCode);
}

std::shared_ptr<Window> ModalRuns::innermostWindow()
{
    return runs().empty() ? nullptr : runs().back()->window;
}

bool ModalRuns::isRunning(const Window& window)
{
    return std::any_of(runs().begin(), runs().end(), [&](const Run* run) { return run->window.get() == &window; });
}

void ModalRuns::windowCloses(const Window& window)
{
    for (Run* run : runs()) {
        if (run->window.get() == &window)
            run->stop(ModalResponse::Stop);
    }
}

} // namespace tljira
