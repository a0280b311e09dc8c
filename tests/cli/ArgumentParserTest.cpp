#include "cli/ArgumentParser.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using cli::Arguments;

QStringList commandLine(const char* line)
{
    return QString::fromUtf8(line).split(u' ');
}

std::optional<Arguments> parsed(const char* line)
{
    return cli::ArgumentParser().parse(commandLine(line));
}

QString errorOf(const QStringList& words)
{
    cli::ArgumentParser parser;
    EXPECT_FALSE(parser.parse(words));
    return parser.error();
}

QString errorOf(const char* line)
{
    return errorOf(commandLine(line));
}

TEST(ArgumentParser, takesOptionsBeforeAndBehindTheCommand)
{
    const auto arguments =
        parsed("tljira --connect-to a:1:b:2 attachments --verbose ABC-1 --all --connect-to [::1]:80:[::1]:81 --json");
    ASSERT_TRUE(arguments);
    EXPECT_EQ(arguments->request, Arguments::Request::Command);
    EXPECT_EQ(arguments->command, u"attachments"_s);
    EXPECT_EQ(arguments->operands, QStringList{u"ABC-1"_s});
    EXPECT_EQ(arguments->routes, (QStringList{u"a:1:b:2"_s, u"[::1]:80:[::1]:81"_s}));
    EXPECT_TRUE(arguments->isVerbose);
    EXPECT_TRUE(arguments->wantsAll);
    EXPECT_TRUE(arguments->wantsJSON);
}

TEST(ArgumentParser, leavesWhatIsNotGivenUnset)
{
    const auto arguments = parsed("tljira download ABC-1 plan.tessaloom");
    ASSERT_TRUE(arguments);
    EXPECT_EQ(arguments->operands, (QStringList{u"ABC-1"_s, u"plan.tessaloom"_s}));
    EXPECT_TRUE(arguments->routes.isEmpty());
    EXPECT_FALSE(arguments->isVerbose);
    EXPECT_FALSE(arguments->wantsAll);
    EXPECT_FALSE(arguments->wantsJSON);
    EXPECT_FALSE(arguments->takesPasswordFromStandardInput);
    EXPECT_TRUE(arguments->documents.isEmpty());
    EXPECT_EQ(arguments->name, std::nullopt);
    EXPECT_EQ(arguments->destination, std::nullopt);
}

TEST(ArgumentParser, readsNameDestinationAndPasswordOption)
{
    EXPECT_EQ(parsed("tljira upload ABC-1 plan --name=other")->name, u"other"_s);
    EXPECT_EQ(parsed("tljira download ABC-1 plan --to some/where")->destination, u"some/where"_s);
    EXPECT_TRUE(parsed("tljira login https://h/ anna --password-stdin")->takesPasswordFromStandardInput);
    EXPECT_FALSE(parsed("tljira login https://h/ anna")->wantsKeyring);
    EXPECT_TRUE(parsed("tljira login https://h/ anna --keyring")->wantsKeyring);
}

TEST(ArgumentParser, takesAnyNumberOfExtensions)
{
    EXPECT_EQ(parsed("tljira attachments ABC-1 --documents odt --documents .tar --documents all")->documents,
              (QStringList{u"odt"_s, u".tar"_s, u"all"_s}));
}

TEST(ArgumentParser, refusesExtensionsThatNoNameHas)
{
    for (const QString& extension : {u""_s, u"."_s, u"tar.gz"_s, u"..odt"_s, u"a/odt"_s, u"odt/"_s}) {
        EXPECT_EQ(errorOf({u"tljira"_s, u"attachments"_s, u"ABC-1"_s, u"--documents"_s, extension}),
                  u"“%1” is no extension of a name."_s.arg(extension));
    }
}

TEST(ArgumentParser, refusesDocumentsBesideEverything)
{
    EXPECT_EQ(errorOf("tljira attachments ABC-1 --all --documents odt"),
              u"attachments takes --all or --documents, not both."_s);
}

TEST(ArgumentParser, endsOptionsAtTwoHyphens)
{
    EXPECT_EQ(parsed("tljira upload ABC-1 -- --all")->operands, (QStringList{u"ABC-1"_s, u"--all"_s}));
}

TEST(ArgumentParser, knowsRequestsForHelpAndVersion)
{
    EXPECT_EQ(parsed("tljira --help")->request, Arguments::Request::Help);
    EXPECT_EQ(parsed("tljira -h")->request, Arguments::Request::Help);
    EXPECT_EQ(parsed("tljira upload --help")->request, Arguments::Request::Help);
    EXPECT_EQ(parsed("tljira --version")->request, Arguments::Request::Version);
}

TEST(ArgumentParser, refusesAMissingOrUnknownCommand)
{
    EXPECT_EQ(errorOf("tljira"), u"No command is given."_s);
    EXPECT_EQ(errorOf("tljira --json"), u"No command is given."_s);
    EXPECT_EQ(errorOf("tljira steal"), u"“steal” is no command."_s);
}

TEST(ArgumentParser, refusesTooFewAndTooManyWords)
{
    EXPECT_EQ(errorOf("tljira login https://h/"), u"login needs USER."_s);
    EXPECT_EQ(errorOf("tljira upload"), u"upload needs KEY."_s);
    EXPECT_EQ(errorOf("tljira download ABC-1"), u"download needs NAME|ID."_s);
    EXPECT_EQ(errorOf("tljira whoami me"), u"“me” is one word too many for whoami."_s);
}

TEST(ArgumentParser, refusesOptionsThatMeanNothingToTheCommand)
{
    EXPECT_EQ(errorOf("tljira whoami --all"), u"whoami takes no --all."_s);
    EXPECT_EQ(errorOf("tljira download ABC-1 x --documents odt"), u"download takes no --documents."_s);
    EXPECT_EQ(errorOf("tljira logout --json"), u"logout takes no --json."_s);
    EXPECT_EQ(errorOf("tljira download ABC-1 x --name y"), u"download takes no --name."_s);
    EXPECT_EQ(errorOf("tljira upload ABC-1 x --to y"), u"upload takes no --to."_s);
    EXPECT_EQ(errorOf("tljira session --password-stdin"), u"session takes no --password-stdin."_s);
    EXPECT_EQ(errorOf("tljira whoami --keyring"), u"whoami takes no --keyring."_s);
}

TEST(ArgumentParser, refusesUnknownOptionsAndMissingValues)
{
    EXPECT_EQ(errorOf("tljira whoami --password secret"), u"Unknown option 'password'."_s);
    EXPECT_EQ(errorOf("tljira download ABC-1 x --to"), u"Missing value after '--to'."_s);
}

TEST(ArgumentParser, refusesARouteOfAnotherForm)
{
    EXPECT_EQ(errorOf("tljira --connect-to jira:80 whoami"), u"“jira:80” is not of the form HOST:PORT:ADDR:PORT."_s);
}

TEST(ArgumentParser, refusesEmptyKeysAndPaths)
{
    EXPECT_EQ(errorOf({u"tljira"_s, u"attachments"_s, u" "_s}), u"The issue's key is empty."_s);
    EXPECT_EQ(errorOf({u"tljira"_s, u"download"_s, u"ABC-1"_s, u"x"_s, u"--to"_s, u""_s}),
              u"The path after --to is empty."_s);
}

TEST(ArgumentParser, refusesAttachmentNamesThatWouldBreakTheirHeaderLine)
{
    const QString name = u"a\r\nX-Header: b"_s;
    EXPECT_EQ(errorOf({u"tljira"_s, u"upload"_s, u"ABC-1"_s, u"file"_s, u"--name"_s, name}),
              u"“a\r\nX-Header: b” cannot be an attachment’s name; see --name."_s);
    EXPECT_EQ(errorOf({u"tljira"_s, u"upload"_s, u"ABC-1"_s, u"a\nb"_s}),
              u"“a\nb” cannot be an attachment’s name; see --name."_s);
    EXPECT_EQ(errorOf({u"tljira"_s, u"upload"_s, u"ABC-1"_s, u"file"_s, u"--name"_s, u""_s}),
              u"“” cannot be an attachment’s name; see --name."_s);
}

} // namespace
