#include "download/JABodyViewController.h"

#include "client/JAController.h"
#include "download/IssueLookUp.h"
#include "download/LookUpHint.h"
#include "platform/foundation/Log.h"
#include "platform/toolkit/views/FillingSubview.h"
#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Alert.h"
#include "platform/toolkit/windows/OpenPanel.h"

#include <QApplication>

/// Named here so that the header, which hosts include, names no class that they do not have.
class JABodyViewController::Hint : public LookUpHint
{
    using LookUpHint::LookUpHint;
};

JABodyViewController::JABodyViewController()
{
    actions.bind("openFileAction", [this] { openFileAction(); });
    actions.bind("uploadAction", [this] { uploadAction(); });
    actions.bind("getListAttachedFilesAction", [this] { getListAttachedFilesAction(); });
}

std::shared_ptr<JABodyViewController> JABodyViewController::initWithNibName(const QString& name,
                                                                            const std::optional<tljira::Bundle>& bundle)
{
    const std::shared_ptr<JABodyViewController> self(new JABodyViewController);
    self->ViewController::initWithNibName(name, bundle);
    return self;
}

void JABodyViewController::viewDidLoad()
{
    ViewController::viewDidLoad();
    m_jaListAttachedWindow = JAListAttachedFilesWindow::init();
    m_lookUpHint = std::make_shared<Hint>(tljira::findView<QLabel>(checkDownloadFiles(), "downloadHelp"));
    tljira::addFillingSubview(containerView(), uploadView());
    tljira::addFillingSubview(containerView(), checkFileView());
    tljira::addFillingSubview(downloadWrapper(), checkDownloadFiles());
    tljira::addFillingSubview(downloadWrapper(), receivingAttachmentsView());
    if (spinerView())
        spinerView()->startAnimation();
    setUploadActualView(checkFileView());
    setDownloadActualView(checkDownloadFiles());
    if (auto* layer = tljira::Layer::wantLayer(view()))
        layer->setBackgroundColor(QColor::fromRgbF(0, 0, 0, 0.4F));
    followFocus();
    m_pathFile = JAController::sharedInstance()->pathFile();
    tljira::setText(pathLabel(), JAController::sharedInstance()->pathFile().value_or(QString()));
}

// Return presses the button of the area that the keyboard is in.
void JABodyViewController::followFocus()
{
    auto* download = tljira::findView<QPushButton>(checkDownloadFiles(), "getListAttachedFilesButton");
    const auto choose = [upload = uploadButton(), download = QPointer(download),
                         area = containerView()](QWidget*, const QWidget* focused) {
        if (!upload || !download || !focused || focused->window() != download->window())
            return;
        const bool isUpload = area && area->isAncestorOf(focused);
        upload->setDefault(isUpload);
        download->setDefault(!isUpload);
    };
    QObject::connect(qApp, &QApplication::focusChanged, view(), choose);
}

void JABodyViewController::setUploadActualView(QWidget* view)
{
    tljira::showOnly(view, {uploadView(), checkFileView()});
}

void JABodyViewController::setDownloadActualView(QWidget* view)
{
    tljira::showOnly(view, {receivingAttachmentsView(), checkDownloadFiles()});
}

void JABodyViewController::openFileAction()
{
    tljira::OpenPanel panel;
    if (panel.runModal() != tljira::ModalResponse::OK)
        return;
    const std::optional<QString> path = panel.path();
    tljira::log(u"%@", path);
    setPathfile(path);
}

void JABodyViewController::setPathfile(const std::optional<QString>& path)
{
    tljira::setText(pathLabel(), path.value_or(QString()));
    JAController::sharedInstance()->setPathFile(path);
    setPathFile(path);
}

void JABodyViewController::uploadAction()
{
    setUploadActualView(uploadView());
}

void JABodyViewController::getListAttachedFilesAction()
{
    lookUpIssue(tljira::text(keyDownloadTextField()), m_lookUpHint,
                [self = sharedFrom(this)](const JAIssueObject& issue) { self->showAttachments(issue); });
}

void JABodyViewController::showAttachments(const JAIssueObject& issue)
{
    if (!m_jaListAttachedWindow)
        return;
    m_jaListAttachedWindow->setAttachments(issue.attachments());
    if (const auto parent = window())
        parent->beginSheet(m_jaListAttachedWindow->window(), nullptr);
}

void JABodyViewController::errorMessage(const QString& text)
{
    tljira::Alert alert;
    alert.setMessageText(QStringLiteral("Error"));
    alert.setInformativeText(text);
    alert.runModal();
}

void JABodyViewController::jaValidSession()
{
    tljira::setEnabled(uploadButton(), true);
}

void JABodyViewController::jaInvalidSession()
{
    tljira::setEnabled(uploadButton(), false);
}
