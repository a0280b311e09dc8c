#include "download/JAListAttachedFilesWindow.h"

#include "client/JAController.h"
#include "download/DownloadCompanion.h"
#include "download/DownloadFileName.h"
#include "download/DownloadFolder.h"
#include "download/DownloadSizes.h"
#include "download/DownloadState.h"
#include "download/DownloadTurn.h"
#include "download/PaletteOnWhite.h"
#include "download/TightLayout.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/values/DateFormatter.h"
#include "platform/foundation/values/Numbers.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/Progress.h"
#include "platform/toolkit/views/View.h"
#include "records/TLJiraOptions.h"

#include <QApplication>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr char tagProperty[] = "tag";
constexpr const char* downloadName = QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Download %1");
constexpr const char* titleText = QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Documents of %1");
constexpr const char* emptyText = QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "%1 has no documents of this program");
// Where the host takes all attachments for documents.
constexpr const char* titleOfAllText = QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Attachments of %1");
constexpr const char* emptyOfAllText = QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "%1 has no attachments");
constexpr int longestKey = 40;
constexpr double listHeight = 350;
constexpr double otherHeight = 200;

QString translated(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JAListAttachedFilesWindow", source);
}

QPushButton* cancelButtonOf(const QWidget* view)
{
    const QList<QPushButton*> buttons = view ? view->findChildren<QPushButton*>() : QList<QPushButton*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton* button) {
        return button->property("action") == QLatin1String("cancalAction");
    });
    return found == buttons.end() ? nullptr : *found;
}

/// Nothing of a view is drawn while this lives; then all that changed at once.
class HeldUpdates
{
public:
    explicit HeldUpdates(QWidget* view)
        : m_held(view)
    {
        if (m_held)
            m_held->setUpdatesEnabled(false);
    }
    ~HeldUpdates()
    {
        if (m_held)
            m_held->setUpdatesEnabled(true);
    }
    HeldUpdates(const HeldUpdates&) = delete;
    HeldUpdates& operator=(const HeldUpdates&) = delete;

private:
    QPointer<QWidget> m_held;
};

} // namespace

/// Named here so that the header, which hosts include, names no class that they do not have.
class JAListAttachedFilesWindow::Turn : public DownloadTurn
{
};

class JAListAttachedFilesWindow::State : public DownloadState
{
};

/// One for all rows: making it takes longer than making a cell.
struct JAListAttachedFilesWindow::Dates
{
    tljira::DateFormatter formatter = tljira::DateFormatter::withMediumStyle();
};

JAListAttachedFilesWindow::JAListAttachedFilesWindow()
    : m_turn(std::make_unique<Turn>())
    , m_state(std::make_unique<State>())
{
    actions.bind("cancalAction", [this](QWidget* sender) { cancalAction(sender); });
}

std::shared_ptr<JAListAttachedFilesWindow> JAListAttachedFilesWindow::init()
{
    tljira::registerViewClass<JAAttachedCell>(QStringLiteral("JAAttachedCell"));
    const std::shared_ptr<JAListAttachedFilesWindow> self(new JAListAttachedFilesWindow);
    self->initWithWindowNibName(QStringLiteral("JAListAttachedFilesWindow"), tljira::frameworkBundle());
    self->window()->setDelegate(self);
    return self;
}

JAListAttachedFilesWindow::~JAListAttachedFilesWindow()
{
    if (tableView())
        tableView()->setDataSource(nullptr);
}

void JAListAttachedFilesWindow::windowWillLoad()
{
    WindowController::windowWillLoad();
    tljira::log(u"JAListAttachedFilesWindow windowWillLoad");
}

void JAListAttachedFilesWindow::windowDidLoad()
{
    WindowController::windowDidLoad();
    if (auto* layer = tljira::Layer::wantLayer(view())) {
        layer->setBackgroundColor(QColor(Qt::white));
        view()->setPalette(paletteOnWhite(QApplication::palette()));
    }
    tljira::log(u"JAListAttachedFilesWindow windowDidLoad");
    if (tableView()) {
        tableView()->setDataSource(this);
        QObject::connect(tableView(), &tljira::TableView::rowActivated, tableView(),
                         [weak = std::weak_ptr(sharedFrom(this))](qint64 row) {
                             if (const auto self = weak.lock())
                                 self->downloadRow(row);
                         });
    }
    m_state->setViews(downloadView(), downloadProgressBar(), downloadPercent());
}

void JAListAttachedFilesWindow::showWindow()
{
    WindowController::showWindow();
    tljira::log(u"JAListAttachedFilesWindow showWindow");
}

// The list.

void JAListAttachedFilesWindow::setIssueKey(const std::optional<QString>& key)
{
    m_issueKey = key;
    m_state->setOpensDocument(key.has_value());
    if (key)
        showIssueKey();
}

void JAListAttachedFilesWindow::showIssueKey()
{
    QString key = m_issueKey->simplified();
    if (key.size() > longestKey)
        key = key.left(longestKey) + QStringLiteral("…");
    auto* title = tljira::findView<QLabel>(view(), "listTitle");
    const bool showsAll = TLJiraOptions::inUse().documents.empty();
    tljira::setText(title, translated(showsAll ? titleOfAllText : titleText).arg(key));
    tljira::setHidden(title, false);
    tljira::setText(tljira::findView<QLabel>(view(), "noDataLabel"),
                    translated(showsAll ? emptyOfAllText : emptyText).arg(key));
}

void JAListAttachedFilesWindow::reload()
{
    if (tableView())
        tableView()->reloadData();
}

qint64 JAListAttachedFilesWindow::numberOfRowsInTableView(tljira::TableView&)
{
    const qint64 count = static_cast<qint64>(m_attachments.size());
    tljira::log(u"self.attachments.count ::: %ld", count);
    // A list begins with the user's locale and time zone of this moment.
    m_dates.reset();
    setActualView(count > 0 ? wrapperTableView() : noDataView());
    return count;
}

tljira::TableCellView* JAListAttachedFilesWindow::viewForTableColumn(tljira::TableView& table, int, qint64 row)
{
    const auto attachment = attachmentAtRow(row);
    if (!attachment)
        return nullptr;
    tljira::TableCellView* cellView = table.makeViewWithIdentifier(QStringLiteral("jaAttachedCell"));
    if (auto* cell = qobject_cast<JAAttachedCell*>(cellView))
        fillCell(*cell, attachment, row);
    return cellView;
}

std::shared_ptr<const JAAttachmentObject> JAListAttachedFilesWindow::attachmentAtRow(qint64 row) const
{
    // A table that was not reloaded may have more rows than there are attachments now.
    const bool exists = row >= 0 && row < static_cast<qint64>(m_attachments.size());
    return exists ? m_attachments[static_cast<std::size_t>(row)] : nullptr;
}

void JAListAttachedFilesWindow::fillCell(JAAttachedCell& cell,
                                         const std::shared_ptr<const JAAttachmentObject>& attachment, qint64 row)
{
    const QString title = tljira::format(QStringLiteral("%@"), attachment->name());
    cell.setAttachmetn(attachment);
    if (auto* label = cell.titleLabel())
        label->setText(title);
    if (auto* label = cell.sizeLabel())
        label->setText(megabytesText(attachment->size()));
    if (auto* label = cell.dateLabel())
        label->setText(dateText(*attachment));
    if (auto* button = cell.downloadButton()) {
        button->setProperty(tagProperty, row);
        button->setAccessibleName(translated(downloadName).arg(title));
    }
    cell.setDownloadAction([weak = std::weak_ptr(sharedFrom(this))](QWidget* sender) {
        if (const auto self = weak.lock())
            self->downloadAction(sender);
    });
}

QString JAListAttachedFilesWindow::dateText(const JAAttachmentObject& attachment)
{
    if (!attachment.date())
        return QString();
    if (!m_dates)
        m_dates = std::make_unique<Dates>();
    return m_dates->formatter.stringFromDate(*attachment.date());
}

// The download.

void JAListAttachedFilesWindow::downloadAction(QWidget* sender)
{
    downloadRow(sender ? sender->property(tagProperty).toLongLong() : 0);
}

void JAListAttachedFilesWindow::downloadRow(qint64 row)
{
    tljira::log(u"Download Action %ld", row);
    const auto attachment = attachmentAtRow(row);
    if (!attachment) {
        tljira::log(u"there is no attachment %ld any more", row);
        return;
    }
    m_path = tljira::appendingPathComponent(DownloadFolder::path(), downloadFileName(attachment->name()));
    const quint64 number = ++m_newestDownload;
    // The folder is made anew when the download before has ended: its file may still arrive there.
    m_turn->take([self = sharedFrom(this), attachment, target = *m_path, number] {
        DownloadFolder::makeAnew(DownloadFolder::path());
        tljira::log(u"%@", target);
        self->download(attachment, target, number);
    });
    showStart(*attachment);
    setActualView(downloadView());
    setIsRunning(true);
}

/// Nothing of an earlier download is left to be seen while the server has not answered.
void JAListAttachedFilesWindow::showStart(const JAAttachmentObject& attachment)
{
    setError(QString());
    tljira::showProgress(downloadProgressBar(), 0);
    m_state->begin(attachment.name().value_or(QString()), attachment.size());
}

void JAListAttachedFilesWindow::setIsRunning(bool isRunning)
{
    QPushButton* cancelButton = cancelButtonOf(downloadView());
    if (!cancelButton)
        return;
    // Return, which may have begun the download, does not cancel it.
    cancelButton->setDefault(!isRunning);
    if (!downloadView()->isVisibleTo(downloadView()->window()))
        return;
    if (!isRunning)
        cancelButton->setFocus();
    else if (downloadProgressBar() && !downloadView()->isAncestorOf(downloadView()->window()->focusWidget()))
        downloadProgressBar()->setFocus();
}

void JAListAttachedFilesWindow::download(const std::shared_ptr<const JAAttachmentObject>& attachment,
                                         const QString& path, quint64 number)
{
    const auto showProgress = [self = sharedFrom(this), attachment,
                               number](qint64, qint64 bytes, const std::optional<tljira::Error>& error, bool finished) {
        // The end of a download that made room for another one is nothing to show in the other's place.
        if (number == self->m_newestDownload)
            self->updateDownload(bytes, attachment->size(), error, finished);
    };
    const auto& client = JAController::sharedInstance();
    client->downloadFile(attachment->downloadLink(), showProgress, path);
    if (const auto companion = DownloadCompanion::of(*this))
        companion->downloadBegan(*attachment, client->downloadTask());
}

void JAListAttachedFilesWindow::updateDownload(qint64 bytes, qint64 total, const std::optional<tljira::Error>& error,
                                               bool completion)
{
    const HeldUpdates held(downloadView());
    const auto task = JAController::sharedInstance()->downloadTask();
    // The ends of other requests come here as well.
    const bool isRunning = task && !task->hasEnded();
    const bool showedError = !tljira::text(downloadError()).isEmpty();
    setIsRunning(isRunning);
    const qint64 divisor = total == 0 ? 1 : total;
    const float percent = static_cast<float>(100.0 / static_cast<double>(divisor) * static_cast<double>(bytes));
    setError(QString());
    if (error) {
        setError(error->localizedDescription());
        if (isRunning)
            m_state->fit();
        else
            m_state->fail();
        return;
    }
    tljira::log(u"percent:%f total:%lld bytes: %lld %hhd", percent, total, bytes, completion);
    if (completion) {
        tljira::setText(downloadPercent(), QStringLiteral("DONE"));
        m_isDone = true;
        m_state->finish();
    } else {
        incrementProgressBar(tljira::truncatedToInt64(percent));
        if (bytes > 0)
            m_state->advance(bytes);
        if (showedError)
            m_state->fit();
    }
}

void JAListAttachedFilesWindow::incrementProgressBar(qint64 percent)
{
    if (downloadProgressBar()) {
        const qint64 least = downloadProgressBar()->minimum();
        const qint64 most = downloadProgressBar()->maximum();
        tljira::showProgress(downloadProgressBar(), static_cast<int>(std::clamp(percent, least, most)));
    }
    tljira::showProgress(downloadPercent(), tljira::format(QStringLiteral("%ld %@"), percent, QStringLiteral("%")));
}

void JAListAttachedFilesWindow::setError(const QString& text)
{
    incrementProgressBar(100);
    tljira::showProgress(downloadPercent(), QString());
    tljira::MessageLine::show(downloadError(), text);
}

void JAListAttachedFilesWindow::setActualView(QWidget* state)
{
    if (const auto shown = window()) {
        QRectF frame = shown->frame();
        frame.setHeight(state && state == wrapperTableView() ? listHeight : otherHeight);
        shown->setFrame(frame, true, true);
    }
    tljira::showOnly(state, {downloadView(), wrapperTableView(), noDataView()});
    if (state && state == noDataView() && view())
        fitIntoHeight(state, view()->width(), static_cast<int>(otherHeight));
    m_state->fit();
}

void JAListAttachedFilesWindow::cancalAction(QWidget*)
{
    m_turn->giveUp();
    JAController::sharedInstance()->cancelDownload();
    const auto sheet = window();
    if (const auto parent = sheet ? sheet->sheetParent() : nullptr)
        parent->endSheet(sheet, tljira::ModalResponse::Cancel);
}

void JAListAttachedFilesWindow::printSubView(QWidget* root, const QString& offset)
{
    if (!root)
        return;
    tljira::log(u"%@ %@", offset, root);
    for (QWidget* subview : tljira::subviews(root))
        printSubView(subview, tljira::format(QStringLiteral("-%@"), offset));
}
