#include "tests/framework/plugin/RoundTrip.h"
#include "tests/kit/RunProgram.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// The Debian packages of this build, unpacked beside each other.

namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::runProgram;

const QString folder = QStringLiteral(PACKAGES);
const QString documentation = QStringLiteral("libtljiracontroller-doc");
const QStringList names = {QStringLiteral("libtljiracontroller-dev"), documentation,
                           QStringLiteral("libtljiracontroller1"), QStringLiteral("libtljiracontrollerclient1"),
                           QStringLiteral("tljira")};

QString packageFile(const QString& name)
{
    const QStringList files = QDir(folder).entryList({name + QStringLiteral("_" VERSION "-1_*.deb")}, QDir::Files);
    EXPECT_EQ(files.size(), 1) << name.toStdString();
    return folder + u'/' + files.value(0);
}

std::string field(const QString& package, const char* name)
{
    const auto outcome =
        runProgram(QStringLiteral("dpkg-deb"), {QStringLiteral("-f"), packageFile(package), QLatin1String(name)});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return QString::fromStdString(outcome.output).trimmed().toStdString();
}

std::string controlFile(const QString& package, const char* name)
{
    return runProgram(QStringLiteral("dpkg-deb"), {QStringLiteral("-I"), packageFile(package), QLatin1String(name)})
        .output;
}

/// One line for each of its files, with mode and owner.
QStringList contents(const QString& package)
{
    return tests::lines(runProgram(QStringLiteral("dpkg-deb"), {QStringLiteral("-c"), packageFile(package)}).output);
}

TEST(Packages, areFive)
{
    QStringList found;
    for (const QString& file : QDir(folder).entryList({QStringLiteral("*.deb")}, QDir::Files))
        found.append(file.section(u'_', 0, 0));
    EXPECT_EQ(found, names);
}

TEST(Packages, sayWhatTheyAre)
{
    for (const QString& name : names) {
        EXPECT_EQ(field(name, "Package"), name.toStdString());
        EXPECT_EQ(field(name, "Version"), VERSION "-1");
        EXPECT_EQ(field(name, "Maintainer"), "TLJiraController developers <tljiracontroller@example.org>");
        EXPECT_THAT(field(name, "Description"),
                    StartsWith(name == QStringLiteral("tljira")
                                   ? "Attach documents to Jira issues and fetch them from the command line\n"
                                   : "Documents of Jira issues for desktop applications - "));
    }
    EXPECT_EQ(field(QStringLiteral("libtljiracontroller-dev"), "Section"), "libdevel");
    EXPECT_EQ(field(documentation, "Section"), "doc");
}

TEST(Packages, canBeInstalledForSeveralMachinesAtOnceWhereTheyAreLibraries)
{
    for (const QString& name : names) {
        const bool isUsedAsAProgram = name == documentation || name == QStringLiteral("tljira");
        EXPECT_EQ(field(name, "Multi-Arch"), isUsedAsAProgram ? "foreign" : "same") << name.toStdString();
    }
    EXPECT_EQ(field(documentation, "Architecture"), "all");
}

TEST(Packages, dependOnWhatTheyUse)
{
    const std::string client = field(QStringLiteral("libtljiracontrollerclient1"), "Depends");
    EXPECT_THAT(client, HasSubstr("libqt6core6"));
    EXPECT_THAT(client, HasSubstr("libcurl4"));
    EXPECT_THAT(client, Not(HasSubstr("libqt6gui6")));

    const std::string windows = field(QStringLiteral("libtljiracontroller1"), "Depends");
    EXPECT_THAT(windows, HasSubstr("libtljiracontrollerclient1 (= " VERSION "-1)"));
    EXPECT_THAT(windows, HasSubstr("libqt6widgets6"));

    const std::string tool = field(QStringLiteral("tljira"), "Depends");
    EXPECT_THAT(tool, HasSubstr("libtljiracontrollerclient1 (= " VERSION "-1)"));
    EXPECT_THAT(tool, HasSubstr("libqt6core6"));
    EXPECT_THAT(tool, Not(HasSubstr("libtljiracontroller1")));
    EXPECT_THAT(tool, Not(HasSubstr("libqt6gui6")));

    EXPECT_EQ(field(QStringLiteral("libtljiracontroller-dev"), "Depends"),
              "libtljiracontroller1 (= " VERSION "-1), libtljiracontrollerclient1 (= " VERSION
              "-1), qt6-base-dev (>= 6.4)");
}

TEST(Packages, belongToRootAndCanBeWrittenByNobodyElse)
{
    for (const QString& name : names) {
        const QStringList entries = contents(name);
        EXPECT_GT(entries.size(), 3);
        for (const QString& entry : entries)
            EXPECT_THAT(entry.toStdString(),
                        ContainsRegex("^(-rw-r--r--|-rwxr-xr-x|drwxr-xr-x|lrwxrwxrwx) root/root .* \\./(usr/|$)"));
    }
}

TEST(Packages, haveNoFileInCommon)
{
    QStringList paths;
    for (const QString& name : names) {
        for (const QString& entry : contents(name)) {
            if (!entry.startsWith(u'd'))
                paths.append(entry.section(QStringLiteral(" ./"), 1).section(QStringLiteral(" -> "), 0, 0));
        }
    }
    EXPECT_EQ(QStringList(paths).removeDuplicates(), 0);
    EXPECT_TRUE(paths.contains(QStringLiteral("usr/include/TLJiraController/TLJiraController.h")));
    EXPECT_TRUE(paths.contains(QStringLiteral("usr/share/man/man1/tljira.1.gz")));
    EXPECT_TRUE(paths.contains(QStringLiteral("usr/share/qt6/doc/TLJiraController.qch")));
    EXPECT_FALSE(
        QStringList(paths.filter(QStringLiteral("standin")) + paths.filter(QStringLiteral("tessaloom"))).size());
}

TEST(Packages, sayWhoHoldsTheRightsAndWhatHasChanged)
{
    for (const QString& name : names) {
        const QString documents = contents(name).filter(QStringLiteral("./usr/share/doc/") + name + u'/').join(u'\n');
        EXPECT_THAT(documents.toStdString(), HasSubstr("/copyright"));
        EXPECT_THAT(documents.toStdString(), HasSubstr("/changelog.Debian.gz"));
    }
}

TEST(Packages, tellOtherPackagesWhatToDependOn)
{
    EXPECT_EQ(controlFile(QStringLiteral("libtljiracontrollerclient1"), "shlibs"),
              "libTLJiraControllerClient 1 libtljiracontrollerclient1 (>= " VERSION ")\n");
    EXPECT_EQ(controlFile(QStringLiteral("libtljiracontroller1"), "shlibs"),
              "libTLJiraController 1 libtljiracontroller1 (>= " VERSION ")\n");
    EXPECT_THAT(controlFile(QStringLiteral("libtljiracontrollerclient1"), "symbols"),
                HasSubstr(" _ZN12JAController14sharedInstanceEv@Base " VERSION "\n"));
    EXPECT_THAT(controlFile(QStringLiteral("libtljiracontroller1"), "symbols"),
                HasSubstr(" TLJiraControllerVersionNumber@Base " VERSION "\n"));
}

TEST(Packages, runAsSoonAsTheyAreUnpacked)
{
    const QTemporaryDir root;
    for (const QString& name : names)
        ASSERT_EQ(runProgram(QStringLiteral("dpkg-deb"), {QStringLiteral("-x"), packageFile(name), root.path()}).status,
                  0);
    const QString tool = root.filePath(QStringLiteral("usr/bin/tljira"));
    EXPECT_EQ(runProgram(tool, {QStringLiteral("--version")}).output, "tljira " VERSION "\n");

    const QString libraries = root.filePath(QStringLiteral("usr/" INSTALL_LIBDIR));
    for (const QString& file : {tool, libraries + QStringLiteral("/libTLJiraController.so.1")}) {
        EXPECT_THAT(runProgram(QStringLiteral("ldd"), {file}).output, Not(HasSubstr("not found")));
        EXPECT_THAT(runProgram(QStringLiteral("readelf"), {QStringLiteral("-SW"), file}).output,
                    Not(HasSubstr(".symtab")));
    }
    tests::PluginHost().expectRoundTrip(libraries + QStringLiteral("/qt6/plugins/tljiracontroller"));
}

} // namespace
