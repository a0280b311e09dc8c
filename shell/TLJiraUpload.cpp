#include "shell/TLJiraUpload.h"

#include "client/JAController.h"
#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"

namespace {

void logOutOnFirstRun()
{
    auto& defaults = tljira::UserDefaults::standardUserDefaults();
    // Settings that cannot be read at the moment do not say that this is the first run.
    if (defaults.boolForKey(kClearCache) || defaults.failure())
        return;
    defaults.setObject(true, kClearCache);
    JAController::sharedInstance()->logout({});
}

} // namespace

std::shared_ptr<TLJiraUpload> TLJiraUpload::init()
{
    const std::shared_ptr<TLJiraUpload> self(new TLJiraUpload);
    self->initWithNib();
    logOutOnFirstRun();
    self->initSession([&self](const auto& bundle) {
        self->m_bodyViewController =
            JAUploadBodyViewController::initWithNibName(QStringLiteral("JAUploadBodyViewController"), bundle);
        return self->m_bodyViewController;
    });
    return self;
}

std::shared_ptr<TLJiraUpload> TLJiraUpload::initWithName(const std::optional<QString>& name,
                                                         const std::optional<QString>& path)
{
    const auto self = init();
    self->setName(name);
    self->setPath(path);
    return self;
}

void TLJiraUpload::setDownloadViews()
{
    SessionWindowController::setDownloadViews();
    m_bodyViewController->setNewPathFile(path(), m_name);
}
