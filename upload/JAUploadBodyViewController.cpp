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
JAUploadBodyViewController::initWithNibName(const QString& name, const std::optional<platform::Bundle>& bundle)
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
    platform::addSubview(view(), m_shadow);
    if (m_uploadFileButton)
        m_uploadFileButton->setFlat(false);
    if (auto* layer = platform::Layer::wantLayer(m_shadow))
        layer->setBackgroundColor(QColor::fromRgbF(0, 0, 0, shadowOpacity));
    platform::setEnabled(m_taskTextField, false);
    platform::setHidden(m_shadow, false);
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
    platform::setText(m_pathLabel, fileName.value_or(QString()));
}

void JAUploadBodyViewController::setUploadActualView(QWidget* view)
{
    platform::setHidden(m_uploadView, true);
    platform::setHidden(m_checkFileView, true);
    platform::setHidden(view, false);
}

void JAUploadBodyViewController::openFileAction()
{
    platform::OpenPanel panel;
    panel.setCanChooseFiles(true);
    panel.setAllowsMultipleSelection(false);
    panel.setCanChooseDirectories(false);
    if (panel.runModal() != platform::ModalResponse::OK)
        return;
    const QString path = panel.path().value_or(QString());
    platform::log(u"%@", path);
    setNewPathFile(path, platform::lastPathComponent(path));
}

void JAUploadBodyViewController::uploadFileAction()
{
    if (platform::text(m_taskTextField).isEmpty())
        return;
    m_isUploading = true;
    // Only the main thread touches it.
    const auto isCancelled = std::make_shared<bool>(false);
    showUploadingWindow(isCancelled);
    platform::setHidden(m_shadow, false);
    platform::setEnabled(m_taskTextField, false);

    // The thread hands its reference back when it is done: views must not go on another thread than the main one.
    platform::GlobalQueue::instance().addOperation(
        [self = sharedFrom(this), key = platform::text(m_taskTextField), isCancelled]() mutable {
            self->startUpload(key);
            const auto task = JAController::sharedInstance()->upladTask();
            platform::MainQueue::instance().addOperation([self = std::move(self), task, isCancelled] {
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
            *isCancelled = returnCode == platform::ModalResponse::Cancel;
            platform::setHidden(self->m_shadow, true);
            platform::setEnabled(self->m_taskTextField, true);
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
            platform::MainQueue::instance().addOperation([self, error] { self->uploadEnded(error); });
        },
        // The client keeps this one for good.
        [weakSelf = std::weak_ptr(self)](qint64 bytesSent, qint64 bytesExpected) {
            platform::MainQueue::instance().addOperation([weakSelf, bytesSent, bytesExpected] {
                if (const auto panel = weakSelf.lock())
                    panel->showProgress(bytesSent, bytesExpected);
            });
        });
}

void JAUploadBodyViewController::showProgress(qint64 bytesSent, qint64 bytesExpected)
{
    const qint64 percent =
        platform::truncatedToInt64(100.0 / static_cast<double>(bytesExpected) * static_cast<double>(bytesSent));
    platform::log(u"updateCallBack %lld %lld %lld", bytesSent, bytesExpected, percent);
    const QString size =
        platform::format(QStringLiteral(" %0.1f / %0.2f mb"), megabytes(bytesSent), megabytes(bytesExpected));
    m_jaUploadingWindow->setUploadingState(percent, size);
}

void JAUploadBodyViewController::uploadEnded(const std::optional<platform::Error>& error)
{
    m_isUploading = false;
    const std::optional<QString> path = zipFilePath();
    const std::optional<QString> folder =
        path ? std::optional(platform::deletingLastPathComponent(*path)) : std::nullopt;
    platform::log(u"before delete src -> p1 = %@, p2 = %@", path, folder);
    if (const auto removeError = platform::FileManager::removeItemAtPath(folderToRemove(path).value_or(QString())))
        platform::log(u"delete src rError -> %@", *removeError);
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
    platform::Alert alert;
    alert.setMessageText(title);
    alert.setStyle(platform::Alert::Style::Warning);
    alert.setInformativeText(message);
    alert.runModal();
}

void JAUploadBodyViewController::jaValidSession()
{
    platform::setEnabled(m_uploadFileButton, true);
    platform::setEnabled(m_taskTextField, true);
    platform::setHidden(m_shadow, true);
}

void JAUploadBodyViewController::jaInvalidSession()
{
    platform::setEnabled(m_uploadFileButton, false);
    platform::setEnabled(m_taskTextField, false);
    platform::setHidden(m_shadow, false);
}

QStringList JAUploadBodyViewController::getRelativePath(const QString& folder) const
{
    return platform::FileManager::filesBelowPath(folder);
}
