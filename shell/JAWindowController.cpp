#include "shell/JAWindowController.h"

#include "client/JAController.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/values/VariantDescription.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/views/FillingSubview.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Application.h"
#include "shell/SubviewCount.h"
#include "shell/UIViewStyle.h"

#include <QVariantList>

namespace {

QString className(const QObject* object)
{
    return object ? QString::fromLatin1(object->metaObject()->className()) : tljira::describe(std::nullopt);
}

} // namespace

JAWindowController::JAWindowController() {}

std::shared_ptr<JAWindowController> JAWindowController::make()
{
    UIViewStyle::styleLoadedViews();
    const std::shared_ptr<JAWindowController> self(new JAWindowController);
    self->initWithWindowNibName(QStringLiteral("JAWindowController"), tljira::frameworkBundle());
    return self;
}

std::shared_ptr<JAWindowController> JAWindowController::init()
{
    const auto self = make();
    JAController::sharedInstance()->setPathFile(QString());
    return self;
}

std::shared_ptr<JAWindowController> JAWindowController::initWithPath(const std::optional<QString>& path)
{
    const auto self = make();
    self->m_pathFile = path;
    JAController::sharedInstance()->setPathFile(path);
    return self;
}

void JAWindowController::windowDidLoad()
{
    WindowController::windowDidLoad();
    tljira::log(u"self.tmpFile: %@", className(m_tmpFile));
    logPages();
    m_bodyViewController = JABodyViewController::initWithNibName(QStringLiteral("JABodyViewController"), std::nullopt);
    m_headViewController = JAHeadViewController::initWithNibName(QStringLiteral("JAHeadViewController"), std::nullopt);
    tljira::addFillingSubview(bodyView(), m_bodyViewController->view());
    tljira::addFillingSubview(headView(), m_headViewController->view());
    noteSubviewCount(*m_bodyViewController);
    noteSubviewCount(*m_headViewController);
    tljira::growToFit(window(), false);
}

void JAWindowController::logPages() const
{
    if (!m_tmpFile)
        return;
    const QVariantList pages = m_tmpFile->property("pages").toList();
    for (const QVariant& page : pages)
        tljira::log(u"%@", tljira::describe(page));
}

void JAWindowController::run(const RunCallBack&) {}

void JAWindowController::windowWillClose(tljira::Window& window)
{
    WindowController::windowWillClose(window);
    tljira::log(u"JAWindowController windowWillClose");
    tljira::Application::stopModal();
}
