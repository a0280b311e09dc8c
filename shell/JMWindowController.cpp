#include "shell/JMWindowController.h"

#include "platform/toolkit/windows/Application.h"

std::shared_ptr<JMWindowController> JMWindowController::init()
{
    const std::shared_ptr<JMWindowController> self(new JMWindowController);
    self->initWithNib();
    self->initSession([&](const std::optional<tljira::Bundle>& bundle) {
        return self->m_bodyViewController = JADownloadBodyViewController::initWithNibName(
                   QStringLiteral("JADownloadBodyViewController"), bundle);
    });
    return self;
}

void JMWindowController::run(const RunCallBack& callBack)
{
    // The host may let go of the controller while it runs.
    const auto self = sharedFrom(this);
    tljira::Application::runModalForWindow(window());
    if (callBack)
        callBack(m_bodyViewController->path());
}
