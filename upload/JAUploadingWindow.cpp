#include "upload/JAUploadingWindow.h"

#include "client/JAController.h"
#include "constants/FrameworkBundle.h"
#include "platform/toolkit/FillingSubview.h"
#include "platform/toolkit/InterfaceTexts.h"
#include "platform/toolkit/View.h"

#include <algorithm>

std::shared_ptr<JAUploadingWindow> JAUploadingWindow::init()
{
    const std::shared_ptr<JAUploadingWindow> self(new JAUploadingWindow);
    self->initWithWindowNibName(QStringLiteral("JAUploadingWindow"),
                                tljira::Bundle::bundleWithIdentifier(QLatin1String(frameworkBundleIdentifier)));
    return self;
}

JAUploadingWindow::JAUploadingWindow()
{
    outlets.bind("containerView", &m_containerView);
    outlets.bind("uploadingView", &m_uploadingView);
    outlets.bind("errorView", &m_errorView);
    outlets.bind("successView", &m_successView);
    outlets.bind("errortitle", &m_errortitle);
    outlets.bind("errorMessage", &m_errorMessage);
    outlets.bind("uploadingProgressBar", &m_uploadingProgressBar);
    outlets.bind("sizeLabel", &m_sizeLabel);
    outlets.bind("cancelButton", &m_cancelButton);
    actions.bind("cancelAction", [this] { cancelAction(); });
}

void JAUploadingWindow::windowDidLoad()
{
    WindowController::windowDidLoad();
    for (QWidget* view : {m_uploadingView.get(), m_errorView.get(), m_successView.get()})
        tljira::addFillingSubview(m_containerView, view);
    setActualView(m_uploadingView);
}

void JAUploadingWindow::setActualView(QWidget* view)
{
    // What is hidden gives up the keyboard, also when it is shown again at once.
    const QPointer<QWidget> focused = view ? view->window()->focusWidget() : nullptr;
    for (QWidget* other : {m_uploadingView.get(), m_errorView.get(), m_successView.get()})
        tljira::setHidden(other, true);
    tljira::setHidden(view, false);
    if (focused && view->isAncestorOf(focused))
        focused->setFocus();
}

void JAUploadingWindow::setUploadingState(qint64 percent, const QString& otherInfo)
{
    tljira::setText(m_sizeLabel, otherInfo);
    if (m_uploadingProgressBar)
        m_uploadingProgressBar->setValue(
            static_cast<int>(std::clamp<qint64>(percent, 1, m_uploadingProgressBar->maximum())));
    setActualView(m_uploadingView);
    setIsRunning(true);
}

void JAUploadingWindow::setErrorState(const tljira::Error& error)
{
    tljira::setText(m_errortitle, QStringLiteral("Error"));
    tljira::setText(m_errorMessage, error.localizedDescription());
    setActualView(m_errorView);
    setIsRunning(false);
}

void JAUploadingWindow::setSuccessState()
{
    tljira::setText(m_sizeLabel, QStringLiteral("DONE"));
    setIsRunning(false);
}

void JAUploadingWindow::setIsRunning(bool isRunning)
{
    if (!m_cancelButton || m_isRunning == isRunning)
        return;
    m_isRunning = isRunning;
    nameButton(isRunning ? QT_TRANSLATE_NOOP("JAUploadingWindow", "Cancel")
                         : QT_TRANSLATE_NOOP("JAUploadingWindow", "Close"));
    // Return, which began the upload, does not cancel it.
    m_cancelButton->setDefault(!isRunning);
    QWidget* next = isRunning ? static_cast<QWidget*>(m_uploadingProgressBar) : m_cancelButton;
    if (next)
        next->setFocus();
}

void JAUploadingWindow::nameButton(const char* name)
{
    if (!m_cancelButton)
        return;
    // A button gives up its shortcut with its text.
    const QKeySequence shortcut = m_cancelButton->shortcut();
    const QString text = tljira::InterfaceTexts::shared().text("JAUploadingWindow", name);
    m_cancelButton->setText(text);
    m_cancelButton->setShortcut(shortcut);
    m_cancelButton->setAccessibleName(text);
}

void JAUploadingWindow::cancelAction()
{
    JAController::sharedInstance()->cancelUpload();
    if (const auto parent = window()->sheetParent())
        parent->endSheet(window(), tljira::ModalResponse::Cancel);
}
