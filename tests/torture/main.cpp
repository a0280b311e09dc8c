#include "tests/kit/SmallDisk.h"
#include "tests/torture/Refusals.h"
#include "tests/torture/Report.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStorageInfo>

#include <algorithm>
#include <cstdio>

namespace {

using namespace Qt::StringLiterals;

/// A folder on another file system than the temporary folder's.
class OtherVolume
{
public:
    OtherVolume()
        : m_disk(m_folder.path(), 512 * 1024)
    {
        const QStorageInfo memory(u"/dev/shm"_s);
        if (m_disk.isThere())
            m_path = m_folder.path();
        else if (memory.isValid() && memory.device() != QStorageInfo(m_folder.path()).device() && m_inMemory.isValid())
            m_path = m_inMemory.path();
        else
            std::fputs("There is no second file system here; downloads across two are left out.\n", stderr);
    }

    const QString& path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_inMemory{u"/dev/shm/torture-XXXXXX"_s};
    tests::SmallDisk m_disk;
    QString m_path;
};

int runRefusals(const torture::Extent& extent, const QString& otherVolume, const QString& report, bool printsLines)
{
    const torture::Tally tally = torture::torment(extent, otherVolume);
    tally.printForbidden();
    if (printsLines)
        tally.printLines();
    std::printf("%d runs, %d of them ended as none may\n", tally.runs(), tally.forbidden());
    const torture::Report written(tally, extent);
    std::printf("\n%s\n", qUtf8Printable(written.table()));
    const QString section = extent.isInWindows ? u"refusals in windows"_s : u"refusals"_s;
    if (!report.isEmpty() && !torture::replaceSection(report, section, written.text()))
        return 2;
    return tally.forbidden() == 0 ? 0 : 1;
}

int runKills(const torture::Extent& extent, const QString& otherVolume, const QString& report)
{
    const auto atChanges = torture::killAtChanges(extent, otherVolume);
    const auto atMoments = torture::killAtMoments(extent, extent.mostRuns, otherVolume);
    const QString text = torture::textOfKills(atChanges, atMoments);
    std::printf("\n%s\n", qUtf8Printable(text));
    const QString section = extent.isInWindows ? u"kills in windows"_s : u"kills"_s;
    if (!report.isEmpty() && !torture::replaceSection(report, section, text))
        return 2;
    int forbidden = 0;
    for (const auto& tally : {atChanges, atMoments}) {
        for (const auto& [kind, counts] : tally)
            forbidden += counts.forbidden;
    }
    return forbidden == 0 ? 0 : 1;
}

int runCuts(const torture::Extent& extent, const QString& otherVolume, const QString& report)
{
    const auto tally = torture::cutPower(extent, otherVolume);
    const QString text = torture::textOfCuts(tally);
    std::printf("\n%s\n", qUtf8Printable(text));
    if (!report.isEmpty() && !torture::replaceSection(report, u"cuts"_s, text))
        return 2;
    const auto isForbidden = [](const auto& entry) { return entry.second.forbidden > 0; };
    return std::ranges::any_of(tally, isForbidden) ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QString number = u"N"_s;
    parser.addPositionalArgument(u"what"_s, u"refusals, kills or cuts"_s);
    parser.addOptions(
        {{u"every"_s, u"One call of N is refused."_s, number, u"1"_s},
         {u"runs"_s, u"At most N runs, an even sample; for kills: at N random moments."_s, number, u"0"_s},
         {u"seconds"_s, u"As many runs as fit into N seconds."_s, number, u"0"_s},
         {u"errand"_s, u"Only this one."_s, u"NAME"_s},
         {u"function"_s, u"Only this one."_s, u"NAME"_s},
         {u"windows"_s, u"Both jobs in their windows, instead of the tool."_s},
         {u"lines"_s, u"Show what the tool said."_s},
         {u"verbose"_s, u"A line for each run."_s},
         {u"write"_s, u"Put the results into this document."_s, u"FILE"_s}});
    parser.addHelpOption();
    parser.process(application);

    torture::Extent extent;
    extent.every = std::max(1U, parser.value(u"every"_s).toUInt());
    extent.mostRuns = parser.value(u"runs"_s).toInt();
    extent.longest = std::chrono::seconds(parser.value(u"seconds"_s).toInt());
    extent.errand = parser.value(u"errand"_s);
    extent.function = parser.value(u"function"_s);
    extent.isVerbose = parser.isSet(u"verbose"_s);
    extent.isInWindows = parser.isSet(u"windows"_s);

    const OtherVolume otherVolume;
    const QString what = parser.positionalArguments().value(0);
    if (what == u"refusals")
        return runRefusals(extent, otherVolume.path(), parser.value(u"write"_s), parser.isSet(u"lines"_s));
    if (what == u"kills")
        return runKills(extent, otherVolume.path(), parser.value(u"write"_s));
    if (what == u"cuts")
        return runCuts(extent, otherVolume.path(), parser.value(u"write"_s));
    parser.showHelp(2);
}
