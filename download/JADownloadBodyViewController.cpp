#include "download/JADownloadBodyViewController.h"

#include "client/JAController.h"
#include "platform/foundation/PathString.h"
#include "platform/toolkit/Application.h"
#include "platform/toolkit/InterfaceTexts.h"
#include "platform/toolkit/View.h"

#include <algorithm>
#include <iterator>

namespace {

using Attachment = std::shared_ptr<const JAAttachmentObject>;

bool isDocument(const Attachment& attachment)
{
    return attachment->name() && tljira::pathExtension(*attachment->name()) == QLatin1String("tessaloom");
}

/// An attachment without a date counts as the oldest: std::optional orders nothing before any value.
bool isNewer(const Attachment& a, const Attachment& b)
{
    return a->date() > b->date();
}

} // namespace

JADownloadBodyViewController::JADownloadBodyViewController()
{
    outlets.bind("issueKeyTextField", &m_issueKeyTextField);
    outlets.bind("getAttachButton", &m_getAttachButton);
    outlets.bind("shadow", &m_shadow);
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
    m_helpLabel = tljira::findView<QLabel>(view(), "issueKeyHelp");
    m_help = tljira::text(m_helpLabel);
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
    const QString key = tljira::text(m_issueKeyTextField);
    // Of an empty key nothing is said.
    const int counted = key.isEmpty() ? 0 : 1;
    m_lookUps += counted;
    showThatItLooks();
    JAController::sharedInstance()->getIssueObject(
        key, [self = sharedFrom(this), key, counted](const std::shared_ptr<const JAIssueObject>& issue, const auto&) {
            self->m_lookUps -= counted;
            self->showThatItLooks();
            if (issue)
                self->showAttachments(key, issue->attachments());
        });
}

/// In words: a look-up has no indicator, and one that fails leaves the panel as it was.
void JADownloadBodyViewController::showThatItLooks()
{
    const char* text =
        QT_TRANSLATE_NOOP("JADownloadBodyViewController", "Looking for the issue… The list opens when it is found.");
    tljira::setText(m_helpLabel, m_lookUps > 0
                                     ? tljira::InterfaceTexts::shared().text("JADownloadBodyViewController", text)
                                     : m_help);
}

void JADownloadBodyViewController::showAttachments(const QString& key, const Attachments& attachments)
{
    Attachments documents = filteredAttachments(attachments);
    std::stable_sort(documents.begin(), documents.end(), isNewer);
    if (!m_jaListAttachedWindow)
        return;
    m_jaListAttachedWindow->setAttachments(documents);
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
    Attachments documents;
    std::copy_if(attachments.begin(), attachments.end(), std::back_inserter(documents), isDocument);
    return documents;
}

void JADownloadBodyViewController::jaValidSession()
{
    tljira::setHidden(m_shadow, true);
    tljira::setEnabled(m_getAttachButton, true);
    tljira::setEnabled(m_issueKeyTextField, true);
}

void JADownloadBodyViewController::jaInvalidSession()
{
    tljira::setHidden(m_shadow, false);
    tljira::setEnabled(m_getAttachButton, false);
    tljira::setEnabled(m_issueKeyTextField, false);
}
