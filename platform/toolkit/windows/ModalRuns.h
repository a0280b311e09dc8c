#pragma once

#include <QEventLoop>

#include <memory>
#include <vector>

namespace tljira {

class Window;

/// The modal runs under way, outermost first.
class ModalRuns
{
public:
    static int run(const std::shared_ptr<Window>& window);
    static void stopInnermost(int returnCode);
    static std::shared_ptr<Window> innermostWindow();
    static bool isRunning(const Window& window);

    /// A run of a window that nobody can see any more could never be ended by its user.
    static void windowCloses(const Window& window);

private:
    struct Run
    {
        std::shared_ptr<Window> window;
        QEventLoop loop;
        bool isStopped = false;
        int returnCode = 0;

        void stop(int code);
    };

    static std::vector<Run*>& runs();
};

} // namespace tljira
