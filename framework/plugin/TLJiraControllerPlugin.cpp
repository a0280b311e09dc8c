#include "framework/plugin/TLJiraControllerPlugin.h"

#include "framework/TLJiraController.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

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

} // namespace

bool TLJiraControllerPlugin::attach(const QString& name, const QString& path)
{
    std::shared_ptr<TLJiraUpload>& upload = currentUpload();
    if (upload && upload->bodyViewController()->isUploading()) {
        upload->showWindow();
        return false;
    }
    if (upload)
        upload->window()->close();
    upload = TLJiraUpload::initWithName(name, path);
    upload->closeOnCancel();
    upload->showWindow();
    return true;
}

QString TLJiraControllerPlugin::fetch()
{
    const auto entry = JMWindowController::init();
    entry->closeOnCancel();
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
    tljira::URLSessionConfiguration::setDefaultRoutes(routes);
}

void TLJiraControllerPlugin::setLogEnabled(bool enabled)
{
    tljira::setLogEnabled(enabled);
}
