#include "cli/CommandTable.h"
#include "tests/cli/ToolRun.h"
#include "tests/kit/RunProgram.h"

#include <QFile>
#include <QStandardPaths>

#include <gmock/gmock.h>

namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::Not;

std::string manPage()
{
    QFile file(QStringLiteral(MAN_PAGE));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

TEST(BuiltTool, needsNoWindowSystemAndNoOtherNetworkLibrary)
{
    if (QStandardPaths::findExecutable(u"ldd"_s).isEmpty())
        GTEST_SKIP() << "there is no ldd";
    const auto libraries = tests::runProgram(u"ldd"_s, {tests::toolPath()});
    EXPECT_EQ(libraries.status, 0);
    EXPECT_THAT(libraries.output, HasSubstr("libQt6Core"));
    EXPECT_THAT(libraries.output, HasSubstr("libcurl"));
    for (const char* unwanted : {"libQt6Gui", "libQt6Widgets", "libQt6Network", "libX11", "libxcb"})
        EXPECT_THAT(libraries.output, Not(HasSubstr(unwanted)));
}

TEST(BuiltTool, startsWithoutTheLibrariesOfTheKeyring)
{
    if (QStandardPaths::findExecutable(u"ldd"_s).isEmpty())
        GTEST_SKIP() << "there is no ldd";
    const auto libraries = tests::runProgram(u"ldd"_s, {tests::toolPath()});
    for (const char* unwanted : {"keychain", "libQt6DBus", "libdbus"})
        EXPECT_THAT(libraries.output, Not(HasSubstr(unwanted)));
}

TEST(BuiltTool, hasAManPageWithoutMistakes)
{
    const QString page = QStringLiteral(MAN_PAGE);
    if (!QStandardPaths::findExecutable(u"mandoc"_s).isEmpty()) {
        const auto lint = tests::runProgram(u"mandoc"_s, {u"-Tlint"_s, u"-Wwarning"_s, page});
        EXPECT_EQ(lint.output + lint.error, "");
        EXPECT_EQ(lint.status, 0);
    } else if (!QStandardPaths::findExecutable(u"groff"_s).isEmpty()) {
        EXPECT_EQ(tests::runProgram(u"groff"_s, {u"-mdoc"_s, u"-ww"_s, u"-z"_s, page}).error, "");
    } else {
        GTEST_SKIP() << "there is neither mandoc nor groff";
    }
}

TEST(BuiltTool, hasAManPageThatNamesEveryCommandAndOption)
{
    const std::string page = manPage();
    for (const auto& command : cli::commandTable()) {
        EXPECT_THAT(page, HasSubstr("\n.It Cm " + command.name.toStdString()));
        for (const QString& option : command.options)
            EXPECT_THAT(page, HasSubstr("\n.It Fl -" + option.toStdString()));
    }
    for (const char* option : {"-connect-to", "-verbose", "-version", "-help"})
        EXPECT_THAT(page, HasSubstr(std::string("Fl ") + option));
}

} // namespace
