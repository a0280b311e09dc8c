#include "bench/Comparison.h"
#include "bench/windows/FirstFrame.h"
#include "bench/windows/LoopWatch.h"
#include "bench/windows/WindowCases.h"
#include "shell/TLJiraUpload.h"
#include "upload/JAUploadingWindow.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSet>

#include <filesystem>
#include <fstream>
#include <memory>

namespace bench {

namespace {

constexpr double longestStall = 0.016;

/// A document alone in a folder of its own, which the upload removes.
std::string documentOfSize(const Bench& bench, long long size)
{
    const std::string folder = bench.folder + "/document";
    std::filesystem::create_directories(folder);
    const std::string path = folder + "/plan.tessaloom";
    std::ofstream(path).put('x');
    std::filesystem::resize_file(path, static_cast<std::uintmax_t>(size));
    return path;
}

std::shared_ptr<TLJiraUpload> openUpload(const std::string& document)
{
    auto upload = TLJiraUpload::initWithName(QStringLiteral("plan.tessaloom"), QString::fromStdString(document));
    upload->showWindow();
    return upload;
}

/// Seconds of the longest stretch away from the event loop while the document is sent.
double stallOfUpload(const Bench& bench)
{
    const auto upload = openUpload(documentOfSize(bench, bench.large));
    const auto panel = upload->bodyViewController();
    runUntil([&] { return panel->view()->isVisible(); });
    panel->taskTextField()->setText(QStringLiteral("SINK-1"));
    const LoopWatch watch;
    panel->uploadFileButton()->click();
    runUntil([&] { return panel->jaUploadingWindow()->sizeLabel()->text() == QLatin1String("DONE"); });
    const double longest = watch.longestSeconds();
    panel->jaUploadingWindow()->cancelAction();
    upload->window()->close();
    return longest;
}

using Maker = void (*)(QWidget* parent);

template <class Control>
void makePlain(QWidget* parent)
{
    new Control(parent);
}

Maker plainLike(const QWidget* control)
{
    if (qobject_cast<const QPushButton*>(control))
        return makePlain<QPushButton>;
    if (qobject_cast<const QLineEdit*>(control))
        return makePlain<QLineEdit>;
    if (qobject_cast<const QProgressBar*>(control))
        return makePlain<QProgressBar>;
    if (qobject_cast<const QLabel*>(control))
        return makePlain<QLabel>;
    return makePlain<QWidget>;
}

/// A plain Qt control for each that the window has, shown at once or waiting to be.
std::vector<Maker> plainControls(TLJiraUpload& upload)
{
    QSet<const QWidget*> controls;
    for (const QWidget* part :
         {upload.window()->widget(), upload.downloadViewContainer(), upload.loginViewContainer()}) {
        for (const QWidget* control : part->findChildren<QWidget*>())
            controls.insert(control);
    }
    std::vector<Maker> makers;
    for (const QWidget* control : controls)
        makers.push_back(plainLike(control));
    return makers;
}

/// A window with these controls, without a text, a style or a place of their own.
std::unique_ptr<QWidget> plainWindow(const std::vector<Maker>& controls, QSize size)
{
    auto plain = std::make_unique<QWidget>();
    for (const Maker make : controls)
        make(plain.get());
    plain->resize(size);
    return plain;
}

Row openingRow(const Bench& bench)
{
    std::shared_ptr<TLJiraUpload> upload;
    std::unique_ptr<QWidget> plain;
    const std::string document = documentOfSize(bench, 1024);
    const auto openOurs = [&]() -> QWidget* {
        upload = openUpload(document);
        return upload->window()->widget();
    };
    secondsToFirstFrame(openOurs);
    const std::vector<Maker> controls = plainControls(*upload);
    const QSize size = upload->window()->widget()->size();
    const Comparison comparison = compare(
        4 * bench.runs, [&] { return secondsToFirstFrame(openOurs); },
        [&] {
            return secondsToFirstFrame([&]() -> QWidget* {
                plain = plainWindow(controls, size);
                plain->show();
                return plain.get();
            });
        });
    return {"opening the upload window, to the first frame (a plain window with as many controls)",
            seconds(comparison.ours),
            seconds(comparison.peer),
            times(comparison.ratio),
            "stated",
            true};
}

} // namespace

std::vector<Row> uploadWindowCases(const Bench& bench)
{
    std::vector<double> stalls;
    stalls.reserve(static_cast<std::size_t>(bench.runs));
    for (int run = 0; run < bench.runs; ++run)
        stalls.push_back(stallOfUpload(bench));
    const double stall = median(stalls);
    return {{"upload of " + mebibytes(static_cast<double>(bench.large)) +
                 " in its window, longest time away from the event loop",
             seconds(stall), "", "", "at most 0.016 s", stall <= longestStall},
            openingRow(bench)};
}

} // namespace bench
