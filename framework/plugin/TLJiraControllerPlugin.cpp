#include "framework/plugin/TLJiraControllerPlugin.h"

#include "framework/TLJiraController.h"
#include "platform/foundation/URLSessionConfiguration.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

/// A Cancel button ends the sheet that its window is; these windows stand alone.
void closeOnClick(const std::shared_ptr<platform::Window>& window, QPushButton* button)
{
    if (!button)
        return;
    QObject::connect(button, &QPushButton::clicked, window->widget(), [weak = std::weak_ptr(window)] {
        if (const auto open = weak.lock())
            open->close();
    });
}

/// Goes before the application object does; Qt deletes the plug-in's own object only after that.
std::shared_ptr<TLJiraUpload>& currentUpload()
{
    static std::shared_ptr<TLJiraUpload> upload;
    [[maybe_unused]] static const bool endsWithApplication = [] {
        qAddPostRoutine([] { currentUpload().reset(); });
        return true;
    }();
    return upload;
}

bool isSending(TLJiraUpload& upload)
{
    return upload.window()->isVisible() && upload.window()->attachedSheet();
}

} // namespace

bool TLJiraControllerPlugin::attach(const QString& name, const QString& path)
{
    std::shared_ptr<TLJiraUpload>& upload = currentUpload();
    if (upload && isSending(*upload)) {
        upload->showWindow();
        return false;
    }
    if (upload)
        upload->window()->close();
    upload = TLJiraUpload::initWithName(name, path);
    upload->showWindow();
    closeOnClick(upload->window(), upload->jaLoginWindow()->cancelButton());
    closeOnClick(upload->window(), upload->bodyViewController()->cancelButton());
    return true;
}

QString TLJiraControllerPlugin::fetch()
{
    const auto entry = JMWindowController::init();
    closeOnClick(entry->window(), entry->jaLoginWindow()->cancelButton());
    QString document;
    entry->run([&](const std::optional<QString>& path) {
        // A download that was cancelled leaves the name of a file that is not there.
        if (path && QFileInfo::exists(*path))
            document = *path;
    });
    return document;
}

void TLJiraControllerPlugin::setRoutes(const QStringList& routes)
{
    platform::URLSessionConfiguration::setDefaultRoutes(routes);
}
