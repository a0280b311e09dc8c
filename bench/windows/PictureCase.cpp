#include "bench/windows/FirstFrame.h"
#include "bench/windows/LoopWatch.h"
#include "bench/windows/WindowCases.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/windows/Window.h"
#include "shell/JAHeadViewController.h"
#include "standin/Server.h"

#include <QBuffer>
#include <QImageWriter>

#include <stdexcept>

namespace bench {

namespace {

constexpr double longestStall = 0.016;

/// About the most pixels and scans that are decoded at all.
QByteArray slowPicture()
{
    QImage image(4096, 4096, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "JPEG");
    writer.setProgressiveScanWrite(true);
    const bool isWritten = writer.write(image);
    const QByteArray& bytes = buffer.data();
    const qsizetype begin = bytes.indexOf("\xff\xda");
    const qsizetype end = bytes.indexOf("\xff\xc4", begin);
    if (!isWritten || begin < 0 || end < 0)
        throw std::runtime_error("no progressive JPEG can be made");
    return bytes.first(end) + bytes.sliced(begin, end - begin).repeated(50) + bytes.sliced(end);
}

} // namespace

Row pictureCase(const Bench& bench)
{
    const std::string path = "/secure/slow-avatar";
    bench.server.misbehave(standin::Match::on(path),
                           standin::Fault().status(200, slowPicture().toStdString(), "image/jpeg"));
    const auto header =
        JAHeadViewController::initWithNibName(QStringLiteral("JAHeadViewController"), tljira::frameworkBundle());
    const auto window = tljira::Window::create(QStringLiteral("Header"), header->view());
    window->makeKeyAndOrderFront();

    const auto begin = std::chrono::steady_clock::now();
    const LoopWatch watch;
    header->setAvatarByURL(QStringLiteral("http://jira.example.test") + QString::fromStdString(path));
    runUntil([&] { return !header->avatarImage()->image().isNull(); });
    const double stall = watch.longestSeconds();
    const double taken = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    window->close();
    bench.server.behave();
    return {"an avatar that takes " + seconds(taken) + " to decode, longest time away from the event loop",
            seconds(stall),
            "",
            "",
            "at most 0.016 s",
            stall <= longestStall};
}

} // namespace bench
