#include "tests/docs/Workshop.h"
#include "tests/kit/Printers.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::Not;
using tests::docs::Block;
using tests::docs::Document;
using tests::docs::documents;
using tests::docs::Outcome;
using tests::docs::Workshop;

/// A block, or the whole document where blocks build on one another.
struct Case
{
    const Document* document;
    Block block;

    std::string place() const { return (document->name + u':' + QString::number(block.line)).toStdString(); }
    std::string name() const
    {
        QString name = document->name + (block.line > 0 ? u"_line_"_s + QString::number(block.line) : QString());
        return name.replace(QRegularExpression(u"[^A-Za-z0-9]"_s), u"_"_s).toStdString();
    }
};

void PrintTo(const Case& value, std::ostream* out)
{
    *out << value.place();
}

std::vector<Case> casesOf(const QString& kind)
{
    std::vector<Case> cases;
    for (const Document& document : documents()) {
        for (const Block& block : document.blocksOf({kind}))
            cases.push_back({&document, block});
    }
    return cases;
}

std::vector<Case> shellCases()
{
    std::vector<Case> cases;
    for (const Document& document : documents()) {
        if (!document.blocksOf({u"sh"_s, u"console"_s}).empty())
            cases.push_back({&document, {}});
    }
    return cases;
}

std::string nameOf(const testing::TestParamInfo<Case>& info)
{
    return info.param.name();
}

class Blocks : public testing::TestWithParam<Case>
{
protected:
    Workshop workshop;
};

class CppBlocks : public Blocks
{
};

TEST_P(CppBlocks, compileByThemselves)
{
    workshop.write(u"block.cpp"_s, GetParam().block.text);
    const Outcome run =
        workshop.shell(QStringLiteral(CXX_COMPILER) + u" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic " STRICT " "
                                                      "$(pkg-config --cflags TLJiraController) block.cpp"_s);
    EXPECT_EQ(run.status, 0) << GetParam().place() << '\n' << run.output.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Documents, CppBlocks, testing::ValuesIn(casesOf(u"cpp"_s)), nameOf);

class CmakeBlocks : public Blocks
{
protected:
    /// The sources that the project names: empty ones, and interface files as the framework has them.
    void provideFiles(const QString& text)
    {
        static const QRegularExpression file(u"[\\w/-]+\\.(cpp|ui)\\b"_s);
        for (auto matches = file.globalMatch(text); matches.hasNext();) {
            const QString name = matches.next().captured();
            workshop.write(u"project/"_s + name, {});
            if (name.endsWith(u".ui"_s)) {
                const QString installed =
                    QStringLiteral(INSTALLATION "/share/TLJiraController/interface/") + name.section(u'/', -1);
                QFile::remove(workshop.path(u"project/"_s + name));
                EXPECT_TRUE(QFile::copy(installed, workshop.path(u"project/"_s + name))) << installed.toStdString();
            }
        }
    }
};

TEST_P(CmakeBlocks, areProjectsOfTheirOwn)
{
    workshop.write(u"project/CMakeLists.txt"_s, GetParam().block.text);
    provideFiles(GetParam().block.text);
    const Outcome run = workshop.run(QStringLiteral(CMAKE_PROGRAM),
                                     {u"-G"_s, u"Ninja"_s, u"-S"_s, u"project"_s, u"-B"_s, u"project-build"_s,
                                      QStringLiteral("-DCMAKE_PREFIX_PATH=" INSTALLATION),
                                      QStringLiteral("-DCMAKE_CXX_COMPILER=" CXX_COMPILER)});
    EXPECT_EQ(run.status, 0) << GetParam().place() << '\n' << run.output.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Documents, CmakeBlocks, testing::ValuesIn(casesOf(u"cmake"_s)), nameOf);

class ShellBlocks : public Blocks
{
protected:
    /// What a transcript shows: dates by their form, the home as that of anna, a status other than 0 in brackets.
    QString transcript(const QString& commandLine)
    {
        const Outcome run = workshop.shell(commandLine);
        const QString end = run.status == 0 ? QString() : u"[%1]\n"_s.arg(run.status);
        QString output = run.output;
        output.replace(workshop.path({}).chopped(workshop.path({}).endsWith(u'/') ? 1 : 0), u"/home/anna"_s);
        return u"$ "_s + commandLine + u'\n' + output + end;
    }
    static QString withoutDates(QString text)
    {
        static const QRegularExpression date(u"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d"_s);
        return text.replace(date, u"DATE"_s);
    }
    void compare(const Block& block)
    {
        QString happened;
        for (const QString& line : block.text.split(u'\n')) {
            if (line.startsWith(u"$ "_s))
                happened += transcript(line.mid(2));
        }
        EXPECT_EQ(withoutDates(happened), withoutDates(block.text));
    }
};

/// In one home, since what one block does the next one relies on.
TEST_P(ShellBlocks, runOneAfterTheOther)
{
    workshop.writeFilesOf(*GetParam().document);
    for (const Block& block : GetParam().document->blocksOf({u"sh"_s, u"console"_s})) {
        const Case current = {GetParam().document, block};
        SCOPED_TRACE(current.place());
        if (block.kind == u"console"_s) {
            compare(block);
            continue;
        }
        const Outcome run = workshop.shell(block.text);
        EXPECT_EQ(run.status, 0) << run.output.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, ShellBlocks, testing::ValuesIn(shellCases()), nameOf);

using Guarding = testing::Test;

TEST_F(Guarding, aCommandThatFailsIsSeen)
{
    const Workshop workshop;
    EXPECT_EQ(workshop.shell(u"make no-such-target\n"_s).status, 2);
    EXPECT_EQ(workshop.shell(u"false\ntrue\n"_s).status, 1);
    EXPECT_NE(workshop.shell(u"no-such-program\n"_s).status, 0);
}

/// All files below the folder of the home, and its empty folders.
QString left(const Workshop& workshop, const QString& folder)
{
    return workshop.shell(u"cd "_s + folder + u" && find . -type f -o -mindepth 1 -type d -empty | sort"_s).output;
}

/// Makes "host" of the functions in the documents and of a driver that uses them.
void buildHost(const Workshop& workshop, const QString& driverName)
{
    for (const auto& [source, name] : {std::pair(driverName, u"main.cpp"_s), {u"HostUser.h"_s, u"HostUser.h"_s}}) {
        QFile file(QStringLiteral(TESTS_SOURCE_DIR "/") + source);
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        workshop.write(name, QString::fromUtf8(file.readAll()));
    }
    // One by one, for a machine that is busy.
    for (const char* source : {"main", "attach", "fetch", "quiet"}) {
        const Outcome compiled =
            workshop.shell(QStringLiteral(CXX_COMPILER) + u" -std=c++20 -c "_s + QLatin1String(source) +
                           u".cpp $(pkg-config --cflags TLJiraController)"_s);
        ASSERT_EQ(compiled.status, 0) << compiled.output.toStdString();
    }
    const Outcome built = workshop.shell(QStringLiteral(CXX_COMPILER) + u" main.o attach.o fetch.o quiet.o -o host "
                                                                        "$(pkg-config --libs TLJiraController)"_s);
    ASSERT_EQ(built.status, 0) << built.output.toStdString();
}

TEST(Jobs, ofTheReadmeLoseNothingAndLeaveNothingBehind)
{
    const Workshop workshop;
    workshop.writeFilesOf(documents().front());
    ASSERT_NO_FATAL_FAILURE(buildHost(workshop, u"JobsDriver.cpp"_s));

    const Outcome run = workshop.shell(u"./host \"$ROUTE\" 2>log"_s);
    EXPECT_EQ(run.output, u"upload to DEMO-99: an error\n"
                          "upload to DEMO-1: DONE\n"
                          "fetched plan.tessaloom: silk\n"
                          "fetched plan.tessaloom: silk\n"_s);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(left(workshop, u"tmp"_s).replace(QRegularExpression(u"-\\d+/"_s), u"-UID/"_s),
              u"./TLJiraController-UID/com.tessalooom.JAController\n"_s);
    EXPECT_THAT(workshop.shell(u"cat log"_s).output.toStdString(),
                testing::HasSubstr("\"plan.tessaloom\" is attached to \"DEMO-1\""));
}

const Document& hostsDocument()
{
    return *std::find_if(documents().begin(), documents().end(),
                         [](const Document& document) { return document.name == u"docs/hosts.md"_s; });
}

/// Each block of these kinds is run by one of the two tests below.
TEST(Jobs, inOtherLanguagesAreThoseThatAreTried)
{
    std::vector<QString> files;
    for (const Document& document : documents()) {
        for (const Block& block : document.blocksOf({u"python"_s, u"qml"_s}))
            files.push_back(document.name + u' ' + block.fileName());
    }
    EXPECT_THAT(files, testing::ElementsAre(u"docs/hosts.md host.py"_s, u"docs/hosts.md Main.qml"_s));
}

TEST(Jobs, inPythonAttachAndFetchAsTheDocumentsSay)
{
    const Workshop workshop;
    workshop.writeFilesOf(hostsDocument());
    const Outcome run = workshop.shell(u"export QT_PLUGIN_PATH=" INSTALLED_LIBRARIES "/qt6/plugins\n"
                                       "python3 " TESTS_SOURCE_DIR "/PythonDriver.py host.py 2>log"_s);
    EXPECT_EQ(run.output, u"attached to DEMO-1\n"
                          "fetched plan.tessaloom b'warp and weft'\n"_s)
        << workshop.shell(u"cat log"_s).output.toStdString();
    EXPECT_EQ(run.status, 0);
}

TEST(Jobs, inQmlAttachAndFetchAsTheDocumentsSay)
{
    const Workshop workshop;
    workshop.writeFilesOf(hostsDocument());
    const Outcome built =
        workshop.shell(QStringLiteral(CXX_COMPILER) + u" -std=c++20 -fPIC -I$PROJECT_FOLDER " TESTS_SOURCE_DIR
                                                      "/QmlDriver.cpp offer.cpp "
                                                      "-o host $(pkg-config --cflags TLJiraController) "
                                                      "$(pkg-config --cflags --libs Qt6Widgets Qt6Quick Qt6Test)"_s);
    ASSERT_EQ(built.status, 0) << built.output.toStdString();
    const Outcome run = workshop.shell(u"export QT_PLUGIN_PATH=" INSTALLED_LIBRARIES "/qt6/plugins\n"
                                       "export QT_QUICK_BACKEND=software\n"
                                       "./host \"$ROUTE\" Main.qml 2>log; grep '^qml: ' log"_s);
    EXPECT_THAT(run.output.toStdString(), testing::MatchesRegex("qml: attached to DEMO-1\n"
                                                                "qml: fetched plan.tessaloom .*/plan.tessaloom\n"))
        << workshop.shell(u"cat log"_s).output.toStdString();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(workshop.shell(u"cat tmp/*/Fetched-*/plan.tessaloom"_s).output, u"warp"_s);
}

/// In a host whose user's own rules for logs ask for all there is.
TEST(Jobs, withTheControllersThemselvesLoseNothingAndLeaveNothingBehind)
{
    const Workshop workshop;
    workshop.writeFilesOf(documents().front());
    const auto integration = std::find_if(documents().begin(), documents().end(), [](const Document& document) {
        return document.name == u"docs/integration.md"_s;
    });
    ASSERT_NE(integration, documents().end());
    workshop.writeFilesOf(*integration);
    ASSERT_NO_FATAL_FAILURE(buildHost(workshop, u"ControllersDriver.cpp"_s));
    const QString ownFile = u"the user's own\n"_s;
    workshop.write(u"documents/plan.tessaloom.tessaloom"_s, ownFile);
    const QString withRules = u"QT_LOGGING_RULES='*.info=true' ./host \"$ROUTE\" documents "_s;

    const Outcome run = workshop.shell(withRules + u"quiet 2>log"_s);
    EXPECT_EQ(run.output, u"the host's own rules hold\n"
                          "upload: DONE\n"
                          "the copy is gone\n"
                          "the copy that was not sent is gone\n"
                          "upload: DONE\n"
                          "fetched 2 plan.tessaloom.tessaloom: silk\n"
                          "fetched 3 plan.tessaloom.tessaloom: silk\n"_s);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(workshop.shell(u"cat documents/plan.tessaloom.tessaloom"_s).output, ownFile);
    EXPECT_EQ(left(workshop, u"documents"_s), u"./2 plan.tessaloom.tessaloom\n"
                                              "./3 plan.tessaloom.tessaloom\n"
                                              "./plan.tessaloom.tessaloom\n"_s);
    EXPECT_EQ(left(workshop, u"tmp"_s).replace(QRegularExpression(u"-\\d+/"_s), u"-UID/"_s),
              u"./TLJiraController-UID/com.tessalooom.JAController\n"_s);
    const std::string password = "correct horse";
    EXPECT_THAT(workshop.shell(u"cat log"_s).output.toStdString(), Not(HasSubstr(password)));
    EXPECT_THAT(workshop.shell(u"XDG_CONFIG_HOME=$HOME/other "_s + withRules + u"loud"_s).output.toStdString(),
                HasSubstr(password));
}

} // namespace
