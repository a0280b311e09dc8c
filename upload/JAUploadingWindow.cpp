#include "upload/JAUploadingWindow.h"

#include "client/JAController.h"
#include "client/ServerName.h"
#include "client/ServerSentence.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/FillingSubview.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/Progress.h"
#include "platform/toolkit/views/RenameButton.h"
#include "platform/toolkit/views/TransferRate.h"
#include "platform/toolkit/views/View.h"
#include "upload/UploadTrouble.h"

#include <QBoxLayout>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>

using tljira::findView;

namespace {

/// Of an error, before it has to be scrolled.
constexpr int linesInSight = 8;

QString text(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JAUploadingWindow", source);
}

/// A label that takes no room while it has no text.
void showText(QLabel* label, const QString& text)
{
    tljira::setText(label, text);
    tljira::setHidden(label, text.isEmpty());
}

QString saysOf(const QString& server, const QString& sentence)
{
    if (sentence.isEmpty())
        return QString();
    if (server.isEmpty())
        return text(QT_TRANSLATE_NOOP("JAUploadingWindow", "The server says: “%1”")).arg(sentence);
    return text(QT_TRANSLATE_NOOP("JAUploadingWindow", "%1 says: “%2”")).arg(server, sentence);
}

} // namespace

/// What goes by, and how fast.
struct JAUploadingWindow::Progress
{
    tljira::TransferRate rate;
    /// Renews what is said while nothing comes any more.
    QTimer clock;
    QString key;
    qint64 sent = 0;
    qint64 expected = 0;
};

std::shared_ptr<JAUploadingWindow> JAUploadingWindow::init()
{
    const std::shared_ptr<JAUploadingWindow> self(new JAUploadingWindow);
    self->initWithWindowNibName(QStringLiteral("JAUploadingWindow"), tljira::frameworkBundle());
    return self;
}

JAUploadingWindow::JAUploadingWindow()
    : m_progress(std::make_unique<Progress>())
{
    m_progress->clock.setInterval(std::chrono::seconds(1));
    QObject::connect(&m_progress->clock, &QTimer::timeout, [this] { setSent(m_progress->sent, m_progress->expected); });
    actions.bind("cancelAction", [this] { cancelAction(); });
}

JAUploadingWindow::~JAUploadingWindow() = default;

void JAUploadingWindow::windowDidLoad()
{
    WindowController::windowDidLoad();
    if (auto* scroll = findView<QScrollArea>(errorView(), "errorScroll"))
        scroll->setMinimumHeight(linesInSight * scroll->fontMetrics().lineSpacing());
    for (QWidget* view : {uploadingView(), errorView(), successView()})
        tljira::addFillingSubview(containerView(), view);
    // One size for all states, with room for the largest.
    tljira::growToFit(window(), false);
    setActualView(uploadingView());
}

void JAUploadingWindow::setActualView(QWidget* view)
{
    tljira::showOnly(view, {uploadingView(), errorView(), successView()});
}

void JAUploadingWindow::setDocument(const QString& name, const QString& key)
{
    m_progress->key = key;
    m_progress->sent = 0;
    m_progress->expected = 0;
    m_progress->rate.begin();
    tljira::setText(findView<QLabel>(uploadingView(), "documentLabel"),
                    text(QT_TRANSLATE_NOOP("JAUploadingWindow", "%1 to %2")).arg(name, key));
    showRateBesideSize();
    showRate(QString());
}

void JAUploadingWindow::setSent(qint64 sent, qint64 expected)
{
    m_progress->sent = sent;
    m_progress->expected = expected;
    m_progress->rate.note(sent, expected);
    m_progress->clock.start();
    if (expected > 0 && sent >= expected) {
        showRate(text(QT_TRANSLATE_NOOP("JAUploadingWindow", "Waiting for the server…")));
        return;
    }
    QStringList parts;
    if (expected > 0)
        parts.append(QStringLiteral("%1 %").arg(sent * 100 / expected));
    if (const QString rate = m_progress->rate.text(); !rate.isEmpty())
        parts.append(rate);
    showRate(parts.join(QStringLiteral(" · ")));
}

void JAUploadingWindow::showRate(const QString& words)
{
    auto* label = findView<QLabel>(uploadingView(), "rateLabel");
    tljira::showProgress(label, words);
    tljira::setHidden(label, words.isEmpty());
    auto* row = uploadingView() ? uploadingView()->findChild<QBoxLayout*>(QStringLiteral("sizeLayout")) : nullptr;
    if (!label || !row || !sizeLabel())
        return;
    // Below each other until the end of the upload once they do not fit beside each other: numbers change all the time.
    const int needed = sizeLabel()->sizeHint().width() + row->spacing() + label->sizeHint().width();
    if (words.isEmpty() || needed <= uploadingView()->width())
        return;
    row->setDirection(QBoxLayout::TopToBottom);
    label->setWordWrap(true);
    tljira::growToFit(windowIfLoaded(), true);
}

void JAUploadingWindow::showRateBesideSize()
{
    if (auto* row = uploadingView() ? uploadingView()->findChild<QBoxLayout*>(QStringLiteral("sizeLayout")) : nullptr)
        row->setDirection(QBoxLayout::LeftToRight);
    if (auto* label = findView<QLabel>(uploadingView(), "rateLabel"))
        label->setWordWrap(false);
}

void JAUploadingWindow::setUploadingState(qint64 percent, const QString& otherInfo)
{
    tljira::showProgress(sizeLabel(), otherInfo);
    if (uploadingProgressBar())
        tljira::showProgress(uploadingProgressBar(),
                             static_cast<int>(std::clamp<qint64>(percent, 1, uploadingProgressBar()->maximum())));
    setActualView(uploadingView());
    nameView(QT_TRANSLATE_NOOP("JAUploadingWindow", "Uploading"));
    tljira::MessageLine::show(findView<QLabel>(uploadingView(), "doneLabel"), QString());
    setIsRunning(true);
}

void JAUploadingWindow::setErrorState(const tljira::Error& error)
{
    tljira::setText(errortitle(), QStringLiteral("Error"));
    tljira::setText(errorMessage(), error.localizedDescription());
    showText(findView<QLabel>(errorView(), "serverSentence"),
             saysOf(client::serverName(), client::serverSentence(error)));
    showText(findView<QLabel>(errorView(), "advice"), text(adviceFor(error)));
    setActualView(errorView());
    setIsRunning(false);
    tljira::growToFit(windowIfLoaded(), true);
}

void JAUploadingWindow::setSuccessState()
{
    tljira::setText(sizeLabel(), QStringLiteral("DONE"));
    setIsRunning(false);
    // After an error the rest stays as it is.
    if (!uploadingView() || uploadingView()->isHidden())
        return;
    nameView(QT_TRANSLATE_NOOP("JAUploadingWindow", "Uploaded"));
    showRate(QString());
    if (!m_progress->key.isEmpty())
        tljira::MessageLine::show(findView<QLabel>(uploadingView(), "doneLabel"),
                                  text(QT_TRANSLATE_NOOP("JAUploadingWindow", "Attached to %1")).arg(m_progress->key));
    tljira::growToFit(windowIfLoaded(), true);
}

void JAUploadingWindow::nameView(const char* name)
{
    tljira::setText(findView<QLabel>(uploadingView(), "uploadingTitle"), text(name));
}

void JAUploadingWindow::setIsRunning(bool isRunning)
{
    if (!isRunning)
        m_progress->clock.stop();
    if (!cancelButton() || m_isRunning == isRunning)
        return;
    m_isRunning = isRunning;
    tljira::renameButton(cancelButton(), text(isRunning ? QT_TRANSLATE_NOOP("JAUploadingWindow", "Cancel")
                                                        : QT_TRANSLATE_NOOP("JAUploadingWindow", "Close")));
    // Return, which began the upload, does not cancel it.
    cancelButton()->setDefault(!isRunning);
    QWidget* next = isRunning ? static_cast<QWidget*>(uploadingProgressBar()) : cancelButton();
    if (next)
        next->setFocus();
}

void JAUploadingWindow::cancelAction()
{
    JAController::sharedInstance()->cancelUpload();
    if (const auto parent = window()->sheetParent())
        parent->endSheet(window(), tljira::ModalResponse::Cancel);
}
