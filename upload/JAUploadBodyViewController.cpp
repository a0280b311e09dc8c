#include "upload/JAUploadBodyViewController.h"

#include "client/Guarded.h"
#include "client/JAController.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/values/Numbers.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/RenameButton.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Alert.h"
#include "platform/toolkit/windows/OpenPanel.h"
#include "upload/DocumentFolder.h"
#include "upload/UploadCompanion.h"
#include "upload/UploadTrouble.h"

#include <QFileInfo>
#include <QLocale>

#include <atomic>
#include <utility>

namespace {

constexpr float shadowOpacity = 0.4F;

QString text(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JAUploadBodyViewController", source);
}

double megabytes(qint64 bytes)
{
    return static_cast<double>(bytes) / 1024.0 / 1024.0;
}

/// As much of it as leaves a margin; a window is wide where its font is large.
void useWidthOf(const tljira::Window& window, tljira::Window& sheet)
{
    constexpr double margin = 20;
    QRectF frame = sheet.frame();
    const double width = window.contentView() ? window.contentView()->width() : 0;
    frame.setWidth(std::max(frame.width(), width - 2 * margin));
    if (frame != sheet.frame())
        sheet.setFrame(frame, false);
}

} // namespace

/// One press of the button, with what the panel showed then. Its marks are set by the main thread.
struct JAUploadBodyViewController::Upload
{
    const QString key;
    const std::optional<QString> filePath;
    const std::optional<QString> fileName;
    const std::shared_ptr<UploadCompanion> companion;
    std::atomic<bool> isCancelled = false;
    bool hasEnded = false;
    /// The first that was reported.
    std::optional<tljira::Error> error = {};
};

/// Named here so that the header, which hosts include, names no class that they do not have.
struct JAUploadBodyViewController::Provider
{
    UploadCompanion::Provider file;
};

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
    tljira::addSubview(view(), shadow());
    if (uploadFileButton())
        uploadFileButton()->setFlat(false);
    if (auto* layer = tljira::Layer::wantLayer(shadow())) {
        layer->setBackgroundColor(QColor::fromRgbF(0, 0, 0, shadowOpacity));
        layer->setIsShade(true);
    }
    jaValidSession();
}

void JAUploadBodyViewController::viewWillLayout()
{
    ViewController::viewWillLayout();
    if (shadow())
        shadow()->setGeometry(view()->rect());
}

void JAUploadBodyViewController::setNewPathFile(const std::optional<QString>& path,
                                                const std::optional<QString>& fileName)
{
    setFilePath(path);
    setFileName(fileName);
    tljira::setText(pathLabel(), fileName.value_or(QString()));
    showDocumentIs(DocumentIs::There);
    lookForDocument();
}

// A slow disk holds up no window.
void JAUploadBodyViewController::lookForDocument()
{
    const std::optional<QString> path = filePath();
    const auto companion = UploadCompanion::of(*this);
    if (const auto size = companion ? companion->documentSize() : std::nullopt)
        showDocumentSize(size);
    if (!path)
        return;
    tljira::GlobalQueue::instance().addOperation([self = sharedFrom(this), path]() mutable {
        const QFileInfo file(*path);
        const std::optional<qint64> size = file.exists() ? std::optional(file.size()) : std::nullopt;
        tljira::MainQueue::instance().addOperation([self = std::move(self), path, size] {
            if (self->filePath() == path)
                self->showDocumentSize(size);
        });
    });
}

void JAUploadBodyViewController::showDocumentSize(const std::optional<qint64>& size)
{
    if (m_documentIs == DocumentIs::Attached)
        return;
    showDocumentIs(size ? DocumentIs::There : DocumentIs::Gone);
    auto* label = tljira::findView<QLabel>(uploadView(), "documentSize");
    tljira::setText(label,
                    size ? QLocale().formattedDataSize(*size, 1, QLocale::DataSizeTraditionalFormat) : QString());
}

void JAUploadBodyViewController::showDocumentIs(DocumentIs state, const QString& key)
{
    if (std::exchange(m_documentIs, state) == state && key.isEmpty())
        return;
    const bool isGone = state == DocumentIs::Gone;
    const bool isAttached = state == DocumentIs::Attached;
    for (QWidget* view : {static_cast<QWidget*>(pathLabel()), tljira::findView<QWidget>(uploadView(), "documentIcon")})
        tljira::setHidden(view, isGone);
    tljira::setHidden(tljira::findView<QWidget>(uploadView(), "documentSize"), state != DocumentIs::There);
    tljira::MessageLine::show(
        tljira::findView<QLabel>(uploadView(), "goneLabel"),
        isGone ? text(QT_TRANSLATE_NOOP("JAUploadBodyViewController",
                                        "The document is gone. Close this window and attach the document again."))
               : QString());
    tljira::MessageLine::show(
        tljira::findView<QLabel>(uploadView(), "attachedLabel"),
        isAttached ? text(QT_TRANSLATE_NOOP("JAUploadBodyViewController", "Attached to %1")).arg(key) : QString());
    tljira::renameButton(cancelButton(),
                         text(isGone || isAttached ? QT_TRANSLATE_NOOP("JAUploadBodyViewController", "Close")
                                                   : QT_TRANSLATE_NOOP("JAUploadBodyViewController", "Cancel")));
    if (isViewLoaded())
        tljira::growToFit(window(), true);
}

void JAUploadBodyViewController::setUploadActualView(QWidget* view)
{
    tljira::showOnly(view, {uploadView(), checkFileView()});
}

void JAUploadBodyViewController::openFileAction()
{
    tljira::OpenPanel panel;
    if (panel.runModal() != tljira::ModalResponse::OK)
        return;
    const QString path = panel.path().value_or(QString());
    tljira::log(u"%@", path);
    setNewPathFile(path, tljira::lastPathComponent(path));
}

bool JAUploadBodyViewController::isUploading() const
{
    return !m_uploads.empty();
}

void JAUploadBodyViewController::uploadFileAction()
{
    if (tljira::text(taskTextField()).isEmpty())
        return;
    const auto upload = std::shared_ptr<Upload>(
        new Upload{tljira::text(taskTextField()), filePath(), fileName(), UploadCompanion::of(*this)});
    m_uploads.push_back(upload);
    showUploadingWindow(upload);
    tljira::setHidden(shadow(), false);
    tljira::setEnabled(taskTextField(), false);
    if (m_uploads.size() == 1)
        beginNextUpload();
}

void JAUploadBodyViewController::showUploadingWindow(const std::shared_ptr<Upload>& upload)
{
    if (const auto ownWindow = window()) {
        useWidthOf(*ownWindow, *m_jaUploadingWindow->window());
        ownWindow->beginSheet(m_jaUploadingWindow->window(), [self = sharedFrom(this), upload](int returnCode) {
            self->sheetDidEnd(upload, returnCode);
        });
    }
    showStart(*upload);
}

void JAUploadBodyViewController::showStart(const Upload& upload)
{
    m_jaUploadingWindow->setDocument(upload.fileName.value_or(QString()), upload.key);
    m_jaUploadingWindow->setUploadingState(0, QStringLiteral("size is calculated"));
}

void JAUploadBodyViewController::sheetDidEnd(const std::shared_ptr<Upload>& upload, int returnCode)
{
    upload->isCancelled = returnCode == tljira::ModalResponse::Cancel;
    const bool isWaiting = !m_uploads.empty() && upload != m_uploads.front();
    if (upload->isCancelled && isWaiting)
        std::erase(m_uploads, upload);
    tljira::setHidden(shadow(), true);
    tljira::setEnabled(taskTextField(), true);
    // The keyboard left the field when it was disabled.
    if (taskTextField() && taskTextField()->isVisibleTo(taskTextField()->window()))
        taskTextField()->setFocus();
}

void JAUploadBodyViewController::beginNextUpload()
{
    if (m_uploads.empty())
        return;
    const auto& companion = m_uploads.front()->companion;
    // The thread hands its references back when it is done: views must not go on another thread than the main one.
    tljira::GlobalQueue::instance().addOperation(
        [self = sharedFrom(this), upload = m_uploads.front(),
         provider = Provider{companion ? companion->uploadBegins(m_uploads.front()->key) : nullptr}]() mutable {
            const auto task =
                self->startUpload(upload, provider) ? JAController::sharedInstance()->upladTask() : nullptr;
            tljira::MainQueue::instance().addOperation([self = std::move(self), upload = std::move(upload), task] {
                // The user was faster than the disk: at that time there was nothing to cancel yet.
                if (upload->isCancelled && task)
                    task->cancel();
            });
        });
}

/// Answers whether something is on its way to the server.
bool JAUploadBodyViewController::startUpload(const std::shared_ptr<Upload>& upload, const Provider& provider)
{
    const auto self = sharedFrom(this);
    const UploadCompanion::File file =
        provider.file ? provider.file() : UploadCompanion::File{upload->filePath, std::nullopt, nullptr};
    setZipFilePath(file.path);
    // Without a file an empty form would go out, and a small one has arrived before it could be cancelled.
    if (provider.file && (file.error || upload->isCancelled)) {
        const auto error = file.error ? *file.error : tljira::makeURLError(tljira::URLError::Cancelled);
        tljira::MainQueue::instance().addOperation([self, upload, error] { self->uploadEnded(*upload, error); });
        return false;
    }
    JAController::sharedInstance()->uploadFileInIssue(
        file.path, upload->fileName, upload->key,
        [self, upload](const auto& error) {
            tljira::MainQueue::instance().addOperation([self, upload, error] { self->uploadEnded(*upload, error); });
        },
        // The client keeps this one for good.
        [weakSelf = std::weak_ptr(self)](qint64 bytesSent, qint64 bytesExpected) {
            tljira::MainQueue::instance().addOperation([weakSelf, bytesSent, bytesExpected] {
                if (const auto panel = weakSelf.lock())
                    panel->showProgress(bytesSent, bytesExpected);
            });
        });
    return true;
}

void JAUploadBodyViewController::showProgress(qint64 bytesSent, qint64 bytesExpected)
{
    const qint64 percent =
        tljira::truncatedToInt64(100.0 / static_cast<double>(bytesExpected) * static_cast<double>(bytesSent));
    tljira::log(u"updateCallBack %lld %lld %lld", bytesSent, bytesExpected, percent);
    const QString size =
        tljira::format(QStringLiteral(" %0.1f / %0.2f mb"), megabytes(bytesSent), megabytes(bytesExpected));
    m_jaUploadingWindow->setUploadingState(percent, size);
    m_jaUploadingWindow->setSent(bytesSent, bytesExpected);
}

void JAUploadBodyViewController::uploadEnded(Upload& upload, const std::optional<tljira::Error>& error)
{
    if (!upload.companion)
        removeFolder();
    if (error)
        showError(upload, *error);
    else
        m_jaUploadingWindow->setSuccessState();
    if (!upload.error)
        upload.error = error;
    showWhatIsLeftOf(upload);
    if (m_uploads.size() > 1)
        showStart(*m_uploads[1]);
    if (std::exchange(upload.hasEnded, true))
        return;
    // An end may be reported twice; what waits begins after the second report.
    tljira::MainQueue::instance().addOperation([self = sharedFrom(this)] {
        const auto ended = self->m_uploads.front();
        self->m_uploads.pop_front();
        if (ended->companion)
            ended->companion->uploadEnded({ended->key, self->zipFilePath(), ended->error});
        self->beginNextUpload();
    });
}

void JAUploadBodyViewController::removeFolder()
{
    const std::optional<QString> path = zipFilePath();
    const std::optional<QString> folder = path ? std::optional(tljira::deletingLastPathComponent(*path)) : std::nullopt;
    tljira::log(u"before delete src -> p1 = %@, p2 = %@", path, folder);
    if (const auto removeError = tljira::FileManager::removeItemAtPath(folderToRemove(path).value_or(QString())))
        tljira::log(u"delete src rError -> %@", *removeError);
}

void JAUploadBodyViewController::showError(const Upload& upload, const tljira::Error& error)
{
    m_jaUploadingWindow->setErrorState(error);
    // With a companion the document is still there.
    if (upload.companion)
        tljira::setText(tljira::findView<QLabel>(m_jaUploadingWindow->errorView(), "advice"),
                        tljira::InterfaceTexts::shared().text("JAUploadingWindow", adviceToTryAgain(error)));
}

void JAUploadBodyViewController::showWhatIsLeftOf(const Upload& upload)
{
    // The panel may show another one by now.
    if (filePath() != upload.filePath)
        return;
    if (upload.error)
        lookForDocument();
    else
        showDocumentIs(DocumentIs::Attached, upload.key);
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
    alert.setInformativeText(message);
    alert.runModal();
}

void JAUploadBodyViewController::jaValidSession()
{
    tljira::setEnabled(uploadFileButton(), true);
    tljira::setEnabled(taskTextField(), true);
    tljira::setHidden(shadow(), true);
}

void JAUploadBodyViewController::jaInvalidSession()
{
    tljira::setEnabled(uploadFileButton(), false);
    tljira::setEnabled(taskTextField(), false);
    tljira::setHidden(shadow(), false);
}

QStringList JAUploadBodyViewController::getRelativePath(const QString& folder) const
{
    return tljira::FileManager::filesBelowPath(folder);
}
