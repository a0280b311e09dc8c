#include "tests/framework/plugin/RoundTrip.h"
#include "tests/kit/RunProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// An installation that was moved to another place after it was made.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tests::runProgram;

const QString prefix = QStringLiteral(INSTALL_PREFIX);
const QString libraries = prefix + QStringLiteral("/" INSTALL_LIBDIR);

std::string packageSays(const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PKG_CONFIG_PATH"), libraries + QStringLiteral("/pkgconfig"));
    const auto outcome = runProgram(QStringLiteral("pkg-config"), arguments, environment);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return QString::fromStdString(outcome.output).trimmed().toStdString();
}

/// What CMake says to one of the projects that use the package.
std::string configure(const QString& project, const QStringList& definitions)
{
    const QTemporaryDir build;
    const auto outcome = runProgram(
        QStringLiteral("cmake"),
        QStringList{QStringLiteral("-G"), QStringLiteral("Ninja"), QStringLiteral("-S"),
                    QStringLiteral(CONSUMERS "/") + project, QStringLiteral("-B"), build.path(),
                    QStringLiteral("-DCMAKE_CXX_COMPILER=" CXX_COMPILER),
                    QStringLiteral("-DTLJiraController_DIR=") + libraries + QStringLiteral("/cmake/TLJiraController")} +
            definitions);
    // CMake breaks lines as it likes.
    return QString::fromStdString(outcome.output + outcome.error).simplified().toStdString();
}

/// To one that asks for the package in these words of find_package.
std::string answerTo(const QString& words, const QStringList& definitions = {})
{
    return configure(QStringLiteral("asking"), QStringList{QStringLiteral("-DWANTED=") + words} + definitions);
}

const QStringList withoutWidgets = {QStringLiteral("-DCMAKE_DISABLE_FIND_PACKAGE_Qt6Widgets=ON")};

TEST(InstalledTree, hasNothingOutsideItsFolders)
{
    EXPECT_THAT(
        QDir(prefix).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        ElementsAre(QStringLiteral("bin"), QStringLiteral("include"), QStringLiteral("lib"), QStringLiteral("share")));
    EXPECT_THAT(QDir(prefix + QStringLiteral("/include")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                ElementsAre(QStringLiteral("TLJiraController")));
    EXPECT_THAT(QDir(prefix + QStringLiteral("/bin")).entryList(QDir::Files), ElementsAre(QStringLiteral("tljira")));
}

TEST(InstalledTree, hasEveryInterfaceFile)
{
    QStringList files;
    for (const char* folder : {"upload", "download", "shell"})
        files += QDir(QStringLiteral(PROJECT_FOLDER "/") + QLatin1String(folder)).entryList({QStringLiteral("*.ui")});
    files.sort();
    const QString folder = QString::fromStdString(
        packageSays({QStringLiteral("--variable=interfacedir"), QStringLiteral("TLJiraController")}));

    EXPECT_EQ(QDir(folder).canonicalPath(),
              QDir(prefix + QStringLiteral("/share/TLJiraController/interface")).canonicalPath());
    EXPECT_EQ(QDir(folder).entryList(QDir::Files, QDir::Name), files);
}

TEST(InstalledTree, hasLibrariesWithTheirNamesAndVersions)
{
    for (const char* name : {"libTLJiraController", "libTLJiraControllerClient"}) {
        const QString library = libraries + u'/' + QLatin1String(name) + QStringLiteral(".so");
        EXPECT_EQ(QFileInfo(library).canonicalFilePath(),
                  QDir(libraries).canonicalPath() + u'/' + QLatin1String(name) + QStringLiteral(".so.1.0.0"));
        const auto dynamic = runProgram(QStringLiteral("readelf"), {QStringLiteral("-d"), library});
        EXPECT_THAT(dynamic.output, HasSubstr(std::string("Library soname: [") + name + ".so.1]"));
        EXPECT_THAT(dynamic.output, HasSubstr("Library runpath: [$ORIGIN]"));
        EXPECT_THAT(dynamic.output, HasSubstr("NODELETE"));
    }
}

TEST(InstalledTree, hasAClientLibraryWithoutWindowsAndOtherNetworkLibraries)
{
    const auto needed =
        runProgram(QStringLiteral("ldd"), {libraries + QStringLiteral("/libTLJiraControllerClient.so.1")});
    EXPECT_EQ(needed.status, 0);
    EXPECT_THAT(needed.output, HasSubstr("libQt6Core"));
    EXPECT_THAT(needed.output, HasSubstr("libcurl"));
    for (const char* unwanted : {"libQt6Gui", "libQt6Widgets", "libQt6Network", "not found"})
        EXPECT_THAT(needed.output, Not(HasSubstr(unwanted)));
}

TEST(InstalledTree, hasAToolThatRunsWithTheLibraryBesideIt)
{
    const QString tool = prefix + QStringLiteral("/bin/tljira");
    EXPECT_EQ(runProgram(tool, {QStringLiteral("--version")}).output, "tljira 1.0.0\n");

    const auto needed = runProgram(QStringLiteral("ldd"), {tool});
    EXPECT_THAT(needed.output, HasSubstr("libTLJiraControllerClient.so.1 => " + prefix.toStdString()));
    EXPECT_THAT(needed.output, Not(HasSubstr("libQt6Gui")));
    // The client is in its library alone.
    const auto own = runProgram(QStringLiteral("nm"), {QStringLiteral("-C"), QStringLiteral("--defined-only"), tool});
    EXPECT_THAT(own.output, HasSubstr("cli::Tool::run"));
    EXPECT_THAT(own.output, Not(HasSubstr("tljira::URLSession::")));
}

#ifdef WITH_KEYRING
TEST(InstalledTree, hasAToolThatLoadsTheKeyringFromBelowTheLibrary)
{
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("tljira"));
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile settings(folder + QStringLiteral("/userdefaults.json"));
    ASSERT_TRUE(settings.open(QFile::WriteOnly));
    settings.write(R"({"jiraUrl":"http://jira.example.test/","signInKeyring":"session"})");
    settings.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nowhere"));

    const auto asked = runProgram(prefix + QStringLiteral("/bin/tljira"), {QStringLiteral("session")}, environment);
    EXPECT_EQ(asked.status, 1);
    EXPECT_THAT(asked.error, HasSubstr("The desktop’s keyring cannot be reached. Is one running?"));
}
#endif

TEST(InstalledTree, tellsPkgConfigWhatIsNeeded)
{
    EXPECT_EQ(packageSays({QStringLiteral("--modversion"), QStringLiteral("TLJiraControllerClient")}), "1.0.0");
    EXPECT_THAT(
        packageSays({QStringLiteral("--cflags"), QStringLiteral("--libs"), QStringLiteral("TLJiraControllerClient")}),
        Not(HasSubstr("Qt6Gui")));
    EXPECT_THAT(packageSays({QStringLiteral("--print-requires"), QStringLiteral("TLJiraController")}),
                HasSubstr("TLJiraControllerClient = 1.0.0"));
}

TEST(InstalledTree, namesNoFolderOfTheBuild)
{
    QDirIterator file(prefix, {QStringLiteral("*.cmake"), QStringLiteral("*.pc"), QStringLiteral("*.h")}, QDir::Files,
                      QDirIterator::Subdirectories);
    int files = 0;
    for (; file.hasNext(); ++files) {
        QFile text(file.next());
        ASSERT_TRUE(text.open(QFile::ReadOnly));
        EXPECT_FALSE(text.readAll().contains(PROJECT_FOLDER)) << text.fileName().toStdString();
    }
    EXPECT_GT(files, 40);
}

TEST(InstalledTree, namesNoClassThatItDoesNotHave)
{
    static const QRegularExpression aDefinition(QStringLiteral("^(?:class|struct) (?:TL_EXPORT )?(\\w+)[^;{]*\\{"),
                                                QRegularExpression::MultilineOption);
    // Classes inside another one are that one's own affair.
    static const QRegularExpression aMention(QStringLiteral("^(?:| *friend )(?:class|struct) (\\w+);"),
                                             QRegularExpression::MultilineOption);
    QSet<QString> defined;
    QSet<QString> mentioned;
    QDirIterator header(prefix + QStringLiteral("/include"), {QStringLiteral("*.h")}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (header.hasNext()) {
        QFile file(header.next());
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (auto found = aDefinition.globalMatch(text); found.hasNext();)
            defined.insert(found.next().captured(1));
        for (auto found = aMention.globalMatch(text); found.hasNext();)
            mentioned.insert(found.next().captured(1));
    }
    EXPECT_GT(mentioned.size(), 5);
    for (const char* ofQt : {"QObject", "QWidget"})
        mentioned.remove(QString::fromLatin1(ofQt));
    EXPECT_THAT((mentioned - defined).values(), IsEmpty());
}

TEST(InstalledTree, isFoundInItsMajorVersionOnly)
{
    for (const char* version : {"2.0", "1.1", "0.9"}) {
        const std::string answer = answerTo(QLatin1String(version) + QStringLiteral(";CONFIG"));
        EXPECT_THAT(answer, HasSubstr("found: 0"));
        EXPECT_THAT(answer, HasSubstr("TLJiraControllerConfig.cmake, version: 1.0.0"));
    }
}

TEST(InstalledTree, saysWhichComponentItHasNot)
{
    const std::string answer = answerTo(QStringLiteral("1.0;CONFIG;COMPONENTS;Server"));
    EXPECT_THAT(answer, HasSubstr("TLJiraController has no component \"Server\""));
    EXPECT_THAT(answer, HasSubstr("its components are Client and Controller."));
    EXPECT_THAT(answer, HasSubstr("found: 0"));
}

TEST(InstalledTree, isFoundWithoutWindowsWhereTheseAreOptional)
{
    const QString wanted = QStringLiteral("1.0;CONFIG;COMPONENTS;Client;OPTIONAL_COMPONENTS;Controller");
    EXPECT_THAT(answerTo(wanted), HasSubstr("found: 1 Client: TRUE Controller: TRUE"));

    const std::string answer = answerTo(wanted, withoutWidgets);
    EXPECT_THAT(answer, HasSubstr("found: 1 Client: TRUE plug-in: "));
    EXPECT_THAT(answer, Not(HasSubstr("Warning")));
}

TEST(InstalledTree, isNotFoundWithoutTheWindowsThatAreNeeded)
{
    EXPECT_THAT(answerTo(QStringLiteral("1.0;CONFIG;COMPONENTS;Controller"), withoutWidgets), HasSubstr("found: 0"));
}

TEST(InstalledTree, isFoundWithoutAComponentThatNobodyKnowsWhereThatIsOptional)
{
    EXPECT_THAT(answerTo(QStringLiteral("1.0;CONFIG;COMPONENTS;Client;OPTIONAL_COMPONENTS;Server")),
                HasSubstr("found: 1 Client: TRUE"));
}

TEST(InstalledTree, refusesAReplacementThatReplacesNothing)
{
    for (const char* file : {"JABodyViewController.v2.ui", "JABodyViewController.txt", "Other.ui"}) {
        const QString definition = QStringLiteral("-DREPLACEMENT=design/") + QLatin1String(file);
        EXPECT_THAT(configure(QStringLiteral("replacing"), {definition}),
                    HasSubstr(std::string("the framework has no interface file ") + file +
                              ". A replacement has the name of the file whose place it takes."));
    }
}

TEST(InstalledTree, saysWhereThePluginIs)
{
    const QString folder = QDir(libraries + QStringLiteral("/qt6/plugins/tljiracontroller")).canonicalPath();
    const std::string said = packageSays({QStringLiteral("--variable=plugindir"), QStringLiteral("TLJiraController")});
    EXPECT_EQ(QDir(QString::fromStdString(said)).canonicalPath(), folder);
    EXPECT_THAT(answerTo(QStringLiteral("1.0;CONFIG")), HasSubstr("plug-in: " + folder.toStdString() + ";"));
}

TEST(InstalledTree, hasAPluginThatBringsADocumentToTheServerAndBack)
{
    tests::PluginHost().expectRoundTrip(libraries + QStringLiteral("/qt6/plugins/tljiracontroller"));
}

TEST(InstalledTree, hasAPluginThatIsFoundByQtsPathOfPlugins)
{
    const QTemporaryDir empty;
    tests::PluginHost host;
    host.environment.insert(QStringLiteral("QT_PLUGIN_PATH"), libraries + QStringLiteral("/qt6/plugins"));
    host.expectRoundTrip(empty.path());
}

} // namespace
