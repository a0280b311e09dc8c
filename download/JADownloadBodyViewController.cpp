#include "download/JADownloadBodyViewController.h"

#include "download/IssueLookUp.h"
#include "download/LookUpHint.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Application.h"
#include "records/Documents.h"

/// Named here so that the header, which hosts include, names no class that they do not have.
class JADownloadBodyViewController::Hint : public LookUpHint
{
    using LookUpHint::LookUpHint;
};

JADownloadBodyViewController::JADownloadBodyViewController()
{
    actions.bind("getAttachAction", [this] { getAttachAction(); });
}

std::shared_ptr<JADownloadBodyViewController>
JADownloadBodyViewController::initWithNibName(const QString& name, const std::optional<tljira::Bundle>& bundle)
{
    const std::shared_ptr<JADownloadBodyViewController> self(new JADownloadBodyViewController);
    self->ViewController::initWithNibName(name, bundle);
    return self;
}

void JADownloadBodyViewController::viewDidLoad()
{
    ViewController::viewDidLoad();
    m_jaListAttachedWindow = JAListAttachedFilesWindow::init();
    jaValidSession();
    m_lookUpHint = std::make_shared<Hint>(tljira::findView<QLabel>(view(), "issueKeyHelp"));
    if (auto* button = tljira::findView<QPushButton>(view(), "cancelButton")) {
        QObject::connect(button, &QPushButton::clicked, button, [weak = std::weak_ptr(sharedFrom(this))] {
            if (const auto self = weak.lock())
                self->cancel();
        });
    }
}

void JADownloadBodyViewController::cancel()
{
    const auto shown = window();
    if (const auto parent = shown ? shown->sheetParent() : nullptr)
        parent->endSheet(shown, tljira::ModalResponse::Cancel);
    else if (shown)
        shown->close();
}

void JADownloadBodyViewController::getAttachAction()
{
    const QString key = tljira::text(issueKeyTextField());
    lookUpIssue(key, m_lookUpHint, [self = sharedFrom(this), key](const JAIssueObject& issue) {
        self->showAttachments(key, issue.attachments());
    });
}

void JADownloadBodyViewController::showAttachments(const QString& key, const Attachments& attachments)
{
    if (!m_jaListAttachedWindow)
        return;
    m_jaListAttachedWindow->setAttachments(documentsNewestFirst(attachments));
    m_jaListAttachedWindow->setIssueKey(key);
    if (const auto parent = window())
        parent->beginSheet(m_jaListAttachedWindow->window(), [self = sharedFrom(this)](int) { self->sheetDidEnd(); });
    m_jaListAttachedWindow->reload();
}

void JADownloadBodyViewController::sheetDidEnd()
{
    m_path = m_jaListAttachedWindow->path();
    if (!m_jaListAttachedWindow->isDone())
        return;
    if (const auto shown = window())
        shown->close();
    tljira::Application::stopModal();
}

JADownloadBodyViewController::Attachments
JADownloadBodyViewController::filteredAttachments(const Attachments& attachments)
{
    return documentsAmong(attachments);
}

void JADownloadBodyViewController::jaValidSession()
{
    tljira::setHidden(shadow(), true);
    tljira::setEnabled(getAttachButton(), true);
    tljira::setEnabled(issueKeyTextField(), true);
}

void JADownloadBodyViewController::jaInvalidSession()
{
    tljira::setHidden(shadow(), false);
    tljira::setEnabled(getAttachButton(), false);
    tljira::setEnabled(issueKeyTextField(), false);
}
