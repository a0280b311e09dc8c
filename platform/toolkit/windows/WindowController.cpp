#include "platform/toolkit/windows/WindowController.h"

namespace tljira {

WindowController::~WindowController()
{
    if (!m_window)
        return;
    if (const std::shared_ptr<Window> parent = m_window->sheetParent())
        parent->endSheet(m_window);
    if (const std::shared_ptr<Window> parent = m_window->parentWindow())
        parent->removeChildWindow(m_window);
    m_window->orderOut();
}

void WindowController::initWithWindowNibName(const QString& name, const std::optional<Bundle>& bundle)
{
    setNib(name, bundle);
}

std::shared_ptr<Window> WindowController::window()
{
    if (m_window || m_isLoading || nibName().isEmpty())
        return m_window;
    m_isLoading = true;
    windowWillLoad();
    const LoadedView loaded = loadNib();
    m_window = Window::create(loaded.windowTitle, loaded.view);
    m_window->setDelegate(sharedFrom(this));
    windowDidLoad();
    return m_window;
}

void WindowController::showWindow()
{
    if (const std::shared_ptr<Window> shown = window())
        shown->makeKeyAndOrderFront();
}

} // namespace tljira
