#include "upload/JAUploadBodyViewController.h"

#include "client/Guarded.h"
#include "client/JAController.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/Numbers.h"
#include "platform/foundation/PathString.h"
#include "platform/toolkit/Alert.h"
#include "platform/toolkit/Layer.h"
#include "platform/toolkit/OpenPanel.h"
#include "platform/toolkit/View.h"
#include "upload/DocumentFolder.h"

namespace {

constexpr float shadowOpacity = 0.4F;

double megabytes(qint64 bytes)
{
    return static_cast<double>(bytes) / 1024.0 / 1024.0;
}

} // namespace

/// An upload begins on another thread.
struct JAUploadBodyViewController::Document
{
    client::Guarded<std::optional<QString>> filePath;
    client::Guarded<std::optional<QString>> fileName;
    client::Guarded<std::optional<QString>> zipFilePath;
};

std::shared_ptr<JAUploadBodyViewController>
JAUploadBodyViewController::initWithNibName(const QString& name, const std::optional<tljira::Bundle>& bundle)
{
    const std::shared_ptr<JAUploadBodyViewController> self(new JAUploadBodyViewController);
    self->ViewController::initWithNibName(name, bundle);
    self->m_jaUploadingWindow = JAUploadingWindow::init();
    return self;
}

JAUploadBodyViewController::JAUploadBodyViewController()
    : m_document(std::make_unique<Document>())
{
    outlets.bind("cancelButton", &m_cancelButton);
    outlets.bind("containerView", &m_containerView);
    outlets.bind("checkFileView", &m_checkFileView);
    outlets.bind("uploadView", &m_uploadView);
    outlets.bind("openFileButton", &m_openFileButton);
    outlets.bind("uploadFileButton", &m_uploadFileButton);
    outlets.bind("pathLabel", &m_pathLabel);
    outlets.bind("taskTextField", &m_taskTextField);
    outlets.bind("percentLabel", &m_percentLabel);
    outlets.bind("indication", &m_indication);
    outlets.bind("shadow", &m_shadow);
    actions.bind("openFileAction", [this] { openFileAction(); });
    actions.bind("uploadFileAction", [this] { uploadFileAction(); });
    actions.bind("cancelAction", [this] { cancelAction(); });
}

JAUploadBodyViewController::~JAUploadBodyViewController() = default;

std::optional<QString> JAUploadBodyViewController::filePath() const
{
    return m_document->filePath.get();
}

void JAUploadBodyViewController::setFilePath(const std::optional<QString>& path)
{
    m_document->filePath.set(path);
}

std::optional<QString> JAUploadBodyViewController::fileName() const
{
    return m_document->fileName.get();
}

void JAUploadBodyViewController::setFileName(const std::optional<QString>& name)
{
    m_document->fileName.set(name);
}

std::optional<QString> JAUploadBodyViewController::zipFilePath() const
{
    return m_document->zipFilePath.get();
}

void JAUploadBodyViewController::setZipFilePath(const std::optional<QString>& path)
{
    m_document->zipFilePath.set(path);
}

void JAUploadBodyViewController::viewDidLoad()
{
    ViewController::viewDidLoad();
    tljira::addSubview(view(), m_shadow);
    if (m_uploadFileButton)
        m_uploadFileButton->setFlat(false);
    if (auto* layer = tljira::Layer::wantLayer(m_shadow))
        layer->setBackgroundColor(QColor::fromRgbF(0, 0, 0, shadowOpacity));
    tljira::setEnabled(m_taskTextField, false);
    tljira::setHidden(m_shadow, false);
    jaValidSession();
}

void JAUploadBodyViewController::viewWillLayout()
{
    ViewController::viewWillLayout();
    if (m_shadow)
        m_shadow->setGeometry(view()->rect());
}

void JAUploadBodyViewController::setNewPathFile(const std::optional<QString>& path,
                                                const std::optional<QString>& fileName)
{
    setFilePath(path);
    setFileName(fileName);
    tljira::setText(m_pathLabel, fileName.value_or(QString()));
}

void JAUploadBodyViewController::setUploadActualView(QWidget* view)
{
    tljira::setHidden(m_uploadView, true);
    tljira::setHidden(m_checkFileView, true);
    tljira::setHidden(view, false);
}

void JAUploadBodyViewController::openFileAction()
{
    tljira::OpenPanel panel;
    panel.setCanChooseFiles(true);
    panel.setAllowsMultipleSelection(false);
    panel.setCanChooseDirectories(false);
    if (panel.runModal() != tljira::ModalResponse::OK)
        return;
    const QString path = panel.path().value_or(QString());
    tljira::log(u"%@", path);
    setNewPathFile(path, tljira::lastPathComponent(path));
}

void JAUploadBodyViewController::uploadFileAction()
{
    if (tljira::text(m_taskTextField).isEmpty())
        return;
    m_isUploading = true;
    // Only the main thread touches it.
    const auto isCancelled = std::make_shared<bool>(false);
    showUploadingWindow(isCancelled);
    tljira::setHidden(m_shadow, false);
    tljira::setEnabled(m_taskTextField, false);

    // The thread hands its reference back when it is done: views must not go on another thread than the main one.
    tljira::GlobalQueue::instance().addOperation(
        [self = sharedFrom(this), key = tljira::text(m_taskTextField), isCancelled]() mutable {
            self->startUpload(key);
            const auto task = JAController::sharedInstance()->upladTask();
            tljira::MainQueue::instance().addOperation([self = std::move(self), task, isCancelled] {
                // The user was faster than the disk: at that time there was nothing to cancel yet.
                if (*isCancelled && task)
                    task->cancel();
            });
        });
}

void JAUploadBodyViewController::showUploadingWindow(const std::shared_ptr<bool>& isCancelled)
{
    if (const auto ownWindow = window()) {
        ownWindow->beginSheet(m_jaUploadingWindow->window(), [self = sharedFrom(this), isCancelled](int returnCode) {
            *isCancelled = returnCode == tljira::ModalResponse::Cancel;
            tljira::setHidden(self->m_shadow, true);
            tljira::setEnabled(self->m_taskTextField, true);
        });
    }
    m_jaUploadingWindow->setUploadingState(0, QStringLiteral("size is calculated"));
}

void JAUploadBodyViewController::startUpload(const QString& key)
{
    setZipFilePath(filePath());
    const auto self = sharedFrom(this);
    JAController::sharedInstance()->uploadFileInIssue(
        zipFilePath(), fileName(), key,
        [self](const auto& error) {
            tljira::MainQueue::instance().addOperation([self, error] { self->uploadEnded(error); });
        },
        // The client keeps this one for good.
        [weakSelf = std::weak_ptr(self)](qint64 bytesSent, qint64 bytesExpected) {
            tljira::MainQueue::instance().addOperation([weakSelf, bytesSent, bytesExpected] {
                if (const auto panel = weakSelf.lock())
                    panel->showProgress(bytesSent, bytesExpected);
            });
        });
}

void JAUploadBodyViewController::showProgress(qint64 bytesSent, qint64 bytesExpected)
{
    const qint64 percent =
        tljira::truncatedToInt64(100.0 / static_cast<double>(bytesExpected) * static_cast<double>(bytesSent));
    tljira::log(u"updateCallBack %lld %lld %lld", bytesSent, bytesExpected, percent);
    const QString size =
        tljira::format(QStringLiteral(" %0.1f / %0.2f mb"), megabytes(bytesSent), megabytes(bytesExpected));
    m_jaUploadingWindow->setUploadingState(percent, size);
}

void JAUploadBodyViewController::uploadEnded(const std::optional<tljira::Error>& error)
{
    m_isUploading = false;
    const std::optional<QString> path = zipFilePath();
    const std::optional<QString> folder = path ? std::optional(tljira::deletingLastPathComponent(*path)) : std::nullopt;
    tljira::log(u"before delete src -> p1 = %@, p2 = %@", path, folder);
    if (const auto removeError = tljira::FileManager::removeItemAtPath(folderToRemove(path).value_or(QString())))
        tljira::log(u"delete src rError -> %@", *removeError);
    if (error)
        m_jaUploadingWindow->setErrorState(*error);
    else
        m_jaUploadingWindow->setSuccessState();
}

void JAUploadBodyViewController::cancelAction()
{
    const auto ownWindow = window();
    if (const auto parent = ownWindow ? ownWindow->sheetParent() : nullptr)
        parent->endSheet(ownWindow);
}

void JAUploadBodyViewController::alert(const QString& title, const QString& message)
{
    tljira::Alert alert;
    alert.setMessageText(title);
    alert.setStyle(tljira::Alert::Style::Warning);
    alert.setInformativeText(message);
    alert.runModal();
}

void JAUploadBodyViewController::jaValidSession()
{
    tljira::setEnabled(m_uploadFileButton, true);
    tljira::setEnabled(m_taskTextField, true);
    tljira::setHidden(m_shadow, true);
}

void JAUploadBodyViewController::jaInvalidSession()
{
    tljira::setEnabled(m_uploadFileButton, false);
    tljira::setEnabled(m_taskTextField, false);
    tljira::setHidden(m_shadow, false);
}

QStringList JAUploadBodyViewController::getRelativePath(const QString& folder) const
{
    return tljira::FileManager::filesBelowPath(folder);
}
