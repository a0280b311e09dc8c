#include "cli/ProgressLine.h"

#include <QLocale>

#include <algorithm>

namespace cli {

namespace {

constexpr int shortestBar = 8;
constexpr int longestBar = 40;

QString sizeText(double bytes)
{
    return QLocale::c().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

QString timeText(std::chrono::seconds time)
{
    const qint64 seconds = time.count();
    const QString end = QStringLiteral("%1").arg(seconds % 60, 2, 10, QChar(u'0'));
    if (seconds < 3600)
        return QStringLiteral("%1:%2").arg(seconds / 60).arg(end);
    return QStringLiteral("%1:%2:%3").arg(seconds / 3600).arg(seconds / 60 % 60, 2, 10, QChar(u'0')).arg(end);
}

QString figures(const Progress& progress)
{
    QString text =
        QStringLiteral("%1 of %2")
            .arg(sizeText(static_cast<double>(progress.bytes)), sizeText(static_cast<double>(progress.total)));
    if (progress.bytesPerSecond)
        text += QStringLiteral("  %1/s").arg(sizeText(*progress.bytesPerSecond));
    if (progress.timeLeft)
        text += QStringLiteral("  %1 left").arg(timeText(*progress.timeLeft));
    return text;
}

QString bar(double share, int length)
{
    const int done = static_cast<int>(share * length);
    return u'[' + QString(done, u'#') + QString(length - done, u'-') + QStringLiteral("] ");
}

} // namespace

QString progressLine(const Progress& progress, int columns)
{
    const double share =
        progress.total > 0
            ? std::clamp(static_cast<double>(progress.bytes) / static_cast<double>(progress.total), 0.0, 1.0)
            : 1.0;
    const QString percent = QStringLiteral("%1% ").arg(static_cast<int>(share * 100), 3);
    const QString text = figures(progress);
    // The figures change their length; a bar that did so too would flicker.
    constexpr int roomForFigures = 46;
    const int room =
        columns - static_cast<int>(percent.size()) - 3 - std::max(roomForFigures, static_cast<int>(text.size()));
    const QString line = room < shortestBar ? percent + text : percent + bar(share, std::min(room, longestBar)) + text;
    return line.leftJustified(columns, u' ', true);
}

} // namespace cli
