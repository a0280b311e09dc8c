#include "download/DownloadState.h"

#include "download/DownloadSizes.h"
#include "download/SecondClick.h"
#include "download/TightLayout.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/PaletteColors.h"
#include "platform/toolkit/views/Progress.h"
#include "platform/toolkit/views/View.h"

#include <QLayout>

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto betweenLooks = 1s;

QString translated(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JAListAttachedFilesWindow", source);
}

/// The first, and longest, that the label has room for.
QString fitting(const QLabel& label, const QStringList& texts)
{
    const auto found = std::find_if(texts.begin(), texts.end(), [&label](const QString& text) {
        return label.fontMetrics().horizontalAdvance(text) < label.contentsRect().width();
    });
    return found == texts.end() ? QString() : *found;
}

QString joined(const QStringList& parts)
{
    QStringList present = parts;
    present.removeAll(QString());
    return present.join(QStringLiteral(" · "));
}

} // namespace

DownloadState::DownloadState()
{
    m_whileNothingComes.setInterval(betweenLooks);
    QObject::connect(&m_whileNothingComes, &QTimer::timeout, [this] { advance(m_bytes); });
}

void DownloadState::setViews(QWidget* view, QProgressBar* bar, QLabel* percent)
{
    m_view = view;
    m_bar = bar;
    m_percent = percent;
    if (!view)
        return;
    m_title = tljira::findView<QLabel>(view, "downloadTitle");
    m_name = tljira::findView<QLabel>(view, "downloadName");
    m_details = tljira::findView<QLabel>(view, "downloadDetails");
    m_doneSize = tljira::findView<QLabel>(view, "downloadDoneSize");
    const QList<QPushButton*> buttons = view->findChildren<QPushButton*>();
    const auto isCancel = [](const QPushButton* button) {
        return button->property("action") == QLatin1String("cancalAction");
    };
    const auto found = std::find_if(buttons.begin(), buttons.end(), isCancel);
    m_button = found == buttons.end() ? nullptr : *found;
    SecondClick::keepFrom(m_button);
}

void DownloadState::begin(const QString& name, qint64 size)
{
    m_size = size;
    m_bytes = 0;
    m_rate.begin();
    m_whileNothingComes.start();
    tljira::setText(m_name, name);
    enter(Phase::Running, QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Downloading"),
          QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Cancel"));
}

void DownloadState::advance(qint64 bytes)
{
    if (m_phase != Phase::Running)
        return;
    m_bytes = bytes;
    m_rate.note(bytes, m_size);
    showDetails();
}

void DownloadState::finish()
{
    enter(Phase::Done, QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Downloaded"),
          m_opensDocument ? QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Open")
                          : QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Close"));
}

void DownloadState::fail()
{
    enter(Phase::Failed, QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Not downloaded"),
          QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Close"));
}

void DownloadState::enter(Phase phase, const char* title, const char* button)
{
    m_phase = phase;
    if (phase != Phase::Running)
        m_whileNothingComes.stop();
    tljira::setText(m_title, translated(title));
    nameButton(button);
    colorBar();
    // The numbers' line has nothing to say beside an error.
    tljira::setHidden(m_percent, phase == Phase::Failed);
    tljira::setHidden(m_details, phase == Phase::Failed);
    tljira::MessageLine::show(m_doneSize, phase == Phase::Done ? megabytesText(m_size) : QString());
    fit();
}

void DownloadState::showDetails()
{
    if (!m_details)
        return;
    if (m_phase != Phase::Running) {
        m_details->clear();
        return;
    }
    // The percents beside it may have become wider at this moment.
    if (QLayout* layout = m_details->parentWidget() ? m_details->parentWidget()->layout() : nullptr)
        layout->activate();
    if (m_bytes == 0) {
        const char* waiting = QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "Waiting for the server…");
        tljira::showProgress(m_details, fitting(*m_details, {translated(waiting)}));
        return;
    }
    const QString arrived = arrivedText(m_bytes, m_size);
    const QString left = m_rate.timeLeftText();
    tljira::showProgress(m_details, fitting(*m_details, {joined({arrived, m_rate.rateText(), left}),
                                                         joined({arrived, left}), arrived, left}));
}

void DownloadState::nameButton(const char* name)
{
    if (!m_button)
        return;
    // A button gives up its shortcut with its text.
    const QKeySequence shortcut = m_button->shortcut();
    const QString text = translated(name);
    m_button->setText(text);
    m_button->setShortcut(shortcut);
    m_button->setAccessibleName(text);
}

void DownloadState::colorBar()
{
    if (!m_bar)
        return;
    QPalette palette;
    if (m_phase == Phase::Failed)
        palette.setColor(QPalette::Highlight, tljira::errorColor(m_bar->parentWidget()->palette()));
    m_bar->setPalette(palette);
}

void DownloadState::fit()
{
    const QWidget* around = m_view ? m_view->parentWidget() : nullptr;
    if (!around)
        return;
    fitIntoHeight(m_view, around->width(), around->height());
    tljira::layoutSubtreeIfNeeded(m_view->parentWidget());
    showDetails();
}
