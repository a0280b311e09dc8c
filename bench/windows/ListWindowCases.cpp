#include "bench/Comparison.h"
#include "bench/IssueAnswer.h"
#include "bench/windows/FirstFrame.h"
#include "bench/windows/LoopWatch.h"
#include "bench/windows/WindowCases.h"
#include "download/JAAttachedCell.h"
#include "download/JADownloadBodyViewController.h"
#include "download/JAListAttachedFilesWindow.h"
#include "platform/foundation/values/JSON.h"
#include "shell/JMWindowController.h"
#include "standin/Server.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include <chrono>
#include <filesystem>

namespace bench {

namespace {

constexpr double longestStall = 0.016;
constexpr int few = 20;
constexpr int many = 100'000;
constexpr int onTheWire = 10'000;

JAListAttachedFilesWindow::Attachments attachmentsOf(int count)
{
    const QByteArray answer = issueAnswer(count);
    return JAIssueObject::initWithDictionary(tljira::decodeJSON(answer)->toObject())->attachments();
}

/// The list window in front of the user, with so many rows.
class ShownList
{
public:
    explicit ShownList(int count)
        : m_attachments(attachmentsOf(count))
    {
        m_list->setAttachments(m_attachments);
        m_list->window()->makeKeyAndOrderFront();
        reload();
    }
    ~ShownList() { m_list->window()->close(); }

    double reload()
    {
        return secondsToFirstFrame([this]() -> QWidget* {
            m_list->reload();
            m_list->tableView()->viewport()->update();
            return m_list->tableView()->viewport();
        });
    }

    /// Seconds of the longest step on the way from the first row to the last.
    double scrollToTheEnd()
    {
        QScrollBar* bar = m_list->tableView()->verticalScrollBar();
        bar->setValue(bar->minimum());
        const LoopWatch watch;
        constexpr int steps = 400;
        for (int step = 1; step <= steps; ++step)
            secondsToFirstFrame([&]() -> QWidget* {
                bar->setValue(static_cast<int>(static_cast<long long>(bar->maximum()) * step / steps));
                m_list->tableView()->viewport()->update();
                return m_list->tableView()->viewport();
            });
        return watch.longestSeconds();
    }

    std::size_t cells() const
    {
        return static_cast<std::size_t>(m_list->tableView()->findChildren<JAAttachedCell*>().size());
    }

private:
    JAListAttachedFilesWindow::Attachments m_attachments;
    std::shared_ptr<JAListAttachedFilesWindow> m_list = JAListAttachedFilesWindow::init();
};

std::vector<Row> listRows(const Bench& bench)
{
    ShownList large(many);
    ShownList small(few);
    const Comparison opening = compare(
        4 * bench.runs, [&] { return large.reload(); }, [&] { return small.reload(); });
    std::vector<double> stalls;
    stalls.reserve(static_cast<std::size_t>(bench.runs));
    for (int run = 0; run < bench.runs; ++run)
        stalls.push_back(large.scrollToTheEnd());
    const double stall = median(stalls);
    return {{"list of 100,000, reload to first frame (list of 20)", seconds(opening.ours), seconds(opening.peer),
             times(opening.ratio), "at most 3.00", opening.ratio <= 3.0},
            {"cells that it makes (list of 20)", std::to_string(large.cells()), std::to_string(small.cells()), "",
             "as many as fit and a few", large.cells() <= small.cells() + 4},
            {"scrolling it from top to bottom, longest time away from the event loop", seconds(stall), "", "",
             "at most 0.016 s", stall <= longestStall}};
}

/// The download entry in front of the user, logged in.
std::shared_ptr<JMWindowController> openDownload()
{
    auto entry = JMWindowController::init();
    entry->showWindow();
    runUntil([&] { return entry->bodyViewController()->view()->isVisible(); });
    return entry;
}

/// Asks for the issue and runs until its list is on screen; seconds.
double showList(JADownloadBodyViewController& panel, const char* key)
{
    const auto begin = std::chrono::steady_clock::now();
    panel.issueKeyTextField()->setText(QString::fromLatin1(key));
    panel.getAttachButton()->click();
    QWidget* list = panel.jaListAttachedWindow()->wrapperTableView();
    runUntil([&] { return list->isVisible() && panel.jaListAttachedWindow()->tableView()->cellAtRow(0); });
    secondsToFirstFrame([&] {
        list->update();
        return list;
    });
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

Row wireRow(const Bench& bench)
{
    for (int i = 0; i < onTheWire; ++i) {
        standin::NewAttachment attachment;
        attachment.fileName = "plan " + std::to_string(i) + ".tessaloom";
        attachment.syntheticSize = 1024;
        bench.server.addAttachment("WIDE-1", attachment);
    }
    const auto entry = openDownload();
    JADownloadBodyViewController& panel = *entry->bodyViewController();
    const QByteArray answer = issueAnswer(onTheWire);
    const Comparison comparison = compare(
        bench.runs,
        [&] {
            const double taken = showList(panel, "WIDE-1");
            panel.jaListAttachedWindow()->cancalAction(nullptr);
            return taken;
        },
        [&] {
            const auto begin = std::chrono::steady_clock::now();
            JAIssueObject::initWithDictionary(tljira::decodeJSON(answer)->toObject());
            return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        });
    entry->window()->close();
    return {"10,000 attachments, from the button to the painted list (bytes to records alone)",
            seconds(comparison.ours),
            seconds(comparison.peer),
            times(comparison.ratio),
            "stated",
            true};
}

struct WindowDownload
{
    double seconds = 0;
    double stall = 0;
};

WindowDownload downloadInWindow()
{
    const auto entry = openDownload();
    JADownloadBodyViewController& panel = *entry->bodyViewController();
    showList(panel, "LARGE-1");
    const auto list = panel.jaListAttachedWindow();
    auto* cell = dynamic_cast<JAAttachedCell*>(list->tableView()->cellAtRow(0));
    const auto begin = std::chrono::steady_clock::now();
    const LoopWatch watch;
    cell->downloadButton()->click();
    runUntil([&] { return list->isDone() && std::filesystem::exists(list->path()->toStdString()); });
    const WindowDownload taken{std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count(),
                               watch.longestSeconds()};
    list->cancalAction(nullptr);
    return taken;
}

std::vector<Row> downloadRows(const Bench& bench)
{
    standin::NewAttachment attachment;
    attachment.fileName = "large.tessaloom";
    attachment.syntheticSize = bench.large;
    bench.server.addAttachment("LARGE-1", attachment);

    const std::string file = bench.folder + "/by-tool";
    std::vector<double> stalls;
    const Comparison comparison = compare(
        bench.runs,
        [&] {
            const WindowDownload taken = downloadInWindow();
            stalls.push_back(taken.stall);
            return taken.seconds;
        },
        [&] {
            std::filesystem::remove(file);
            return measureProcess({TLJIRA_PATH, "--connect-to", bench.route(), "download", "LARGE-1", "large.tessaloom",
                                   "--to", file})
                .seconds;
        });
    const std::string what = "download of " + mebibytes(static_cast<double>(bench.large)) + " in the list window";
    const double stall = median(stalls);
    return {{what + ", longest time away from the event loop", seconds(stall), "", "", "at most 0.016 s",
             stall <= longestStall},
            {what + " (tljira, whole process)", seconds(comparison.ours), seconds(comparison.peer),
             times(comparison.ratio), "at most 1.10", comparison.ratio <= 1.1}};
}

} // namespace

std::vector<Row> listWindowCases(const Bench& bench)
{
    std::vector<Row> rows = listRows(bench);
    rows.push_back(wireRow(bench));
    for (const Row& row : downloadRows(bench))
        rows.push_back(row);
    return rows;
}

} // namespace bench
