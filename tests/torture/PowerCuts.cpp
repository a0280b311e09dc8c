#include "tests/torture/PowerCuts.h"

#include "tests/torture/Disk.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>

#include <cstdio>
#include <stdexcept>

namespace torture {

namespace {

using Effect = Errand::Effect;

/// Does one errand, and then puts the disk into every state that it may have been in.
class Cutter
{
public:
    Cutter(Errand::Kind kind, const QString& otherVolume)
        : m_place(otherVolume)
        , m_program(m_place.root())
        , m_errand(kind, m_place)
    {
        m_errand.prepare();
        Disk disk(roots());
        const Run run = m_program.run(m_errand.command(), {.logsChanges = true});
        if (run.status != 0)
            throw std::runtime_error("the errand that is to be cut failed: " + run.error.toStdString());
        const auto changes = readChanges(m_program.changesPath());
        for (const LoggedChange& change : changes) {
            disk.apply(change);
            ++m_counts.cuts;
            lookAtStates(disk, &change == &changes.back());
        }
    }

    const CutCounts& counts() const { return m_counts; }

private:
    QStringList roots() const
    {
        QStringList roots;
        for (const char* name : {"config", "data", "tmp", "work", "home"})
            roots << m_place.root() + u'/' + QLatin1String(name);
        if (!m_place.otherVolume().isEmpty())
            roots << m_place.otherVolume();
        return roots;
    }

    void lookAtStates(const Disk& disk, bool isEnd)
    {
        const int names = disk.unsettledNames();
        for (const Disk::Bytes bytes : Disk::everyBytes) {
            for (int count = 0; count <= names; ++count)
                look(disk.image(count, -1, bytes), isEnd);
            for (int without = 0; without < names; ++without)
                look(disk.image(names, without, bytes), isEnd);
        }
    }

    void look(const Disk::Image& image, bool isEnd)
    {
        const QByteArray key = keyOf(image);
        const bool isNew = !m_kinds.contains(key);
        if (isNew)
            m_kinds.insert(key, judge(image));
        const QString kind = m_kinds.value(key);
        if (isEnd && kind != u"after" && !m_lost.contains(key)) {
            m_lost.insert(key);
            ++m_counts.lost;
            // Settings and cookies are waited for.
            if (!isDownload())
                forbid(QStringLiteral("after the end: ") + kind);
        }
        if (!isNew)
            return;
        ++m_counts.states;
        if (kind == u"before")
            ++m_counts.asBefore;
        else if (kind == u"after")
            ++m_counts.asAfter;
        else if (kind == u"between")
            ++m_counts.between;
        else if (kind == u"incomplete")
            ++m_counts.incomplete;
        else
            forbid(kind);
        if (const QString problem = runAgain(image); !problem.isEmpty())
            forbid(QStringLiteral("the next run: ") + problem);
    }

    bool isDownload() const { return !m_errand.destination().isEmpty(); }

    void forbid(const QString& problem)
    {
        ++m_counts.forbidden;
        std::printf("%s, power cut: %s\n", qUtf8Printable(Errand::name(m_errand.kind())), qUtf8Printable(problem));
        std::fflush(stdout);
    }

    /// What matters of a state: settings, cookies and the final name; of other files, that they are there.
    QByteArray keyOf(const Disk::Image& image) const
    {
        QByteArray key;
        for (auto item = image.constBegin(); item != image.constEnd(); ++item) {
            const bool matters = item.key() == m_place.settingsPath() || item.key() == m_place.cookiesPath();
            const bool isFinal = item.key() == m_errand.destination();
            key += item.key().toUtf8() + '\n';
            if (matters)
                key += item.value() + '\n';
            if (isFinal)
                key += item.value() == m_place.documentBytes() ? "whole\n" : "part\n";
        }
        return key;
    }

    void put(const Disk::Image& image)
    {
        for (const QString& root : roots()) {
            for (const QFileInfo& item :
                 QDir(root).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
                if (item.isDir())
                    QDir(item.filePath()).removeRecursively();
                else
                    QFile::remove(item.filePath());
            }
        }
        for (auto item = image.constBegin(); item != image.constEnd(); ++item) {
            if (item.value().isNull()) {
                QDir().mkpath(item.key());
                continue;
            }
            QFile file(item.key());
            if (!file.open(QIODevice::WriteOnly) || file.write(item.value()) != item.value().size())
                throw std::runtime_error("cannot make " + item.key().toStdString());
        }
    }

    /// The word for a state, or what is wrong with it.
    QString judge(const Disk::Image& image)
    {
        // Upload and session leave nothing on the disk: what counts there is that nothing changes.
        put(image);
        const Errand::Finding found = m_errand.find();
        switch (found.effect) {
        case Effect::None:
            return QStringLiteral("before");
        case Effect::Whole:
            return QStringLiteral("after");
        case Effect::Part:
            return QStringLiteral("between");
        case Effect::PartialFile:
            return isDownload() ? QStringLiteral("incomplete") : found.detail;
        case Effect::WholeWithoutCookies:
            return QStringLiteral("a login without cookies");
        case Effect::Damage:
            break;
        }
        return found.detail;
    }

    /// With the power back.
    QString runAgain(const Disk::Image& image)
    {
        put(image);
        if (isDownload())
            QFile::remove(m_errand.destination());
        for (const auto& attachment : m_place.server.attachments(Place::issue)) {
            if (m_errand.kind() == Errand::Kind::Upload)
                m_place.server.removeAttachment(attachment.id);
        }
        const bool isLogout = m_errand.kind() == Errand::Kind::Logout;
        const Errand next(isLogout ? Errand::Kind::Login : m_errand.kind(), m_place);
        const Run run = m_program.run(isLogout ? next.command() : m_errand.command());
        if (run.status != 0 || !run.error.isEmpty())
            return QStringLiteral("status %1, says %2").arg(run.status).arg(QString::fromUtf8(run.error));
        return {};
    }

    Place m_place;
    Program m_program;
    Errand m_errand;
    CutCounts m_counts;
    /// What was found in each state, and which of them may be there although the errand has ended well.
    QHash<QByteArray, QString> m_kinds;
    QSet<QByteArray> m_lost;
};

} // namespace

CutTally cutPower(const Extent& extent, const QString& otherVolume)
{
    CutTally tally;
    for (const Errand::Kind kind :
         {Errand::Kind::Login, Errand::Kind::Download, Errand::Kind::DownloadAcross, Errand::Kind::Logout}) {
        const bool isLeftOut = (kind == Errand::Kind::DownloadAcross && otherVolume.isEmpty()) ||
                               (!extent.errand.isEmpty() && extent.errand != Errand::name(kind));
        if (!isLeftOut)
            tally[kind] = Cutter(kind, otherVolume).counts();
    }
    return tally;
}

} // namespace torture
