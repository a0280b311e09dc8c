#include "tests/support/RunProgram.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>

// What the two libraries publish, as the linker sees it.

namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::IsSupersetOf;

const QString clientLibrary = QStringLiteral(CLIENT_LIBRARY);
const QString windowLibrary = QStringLiteral(WINDOW_LIBRARY);

/// Their names, demangled, without the version.
QStringList exportedSymbols(const QString& library)
{
    const auto outcome = tests::runProgram(
        QStringLiteral("nm"), {QStringLiteral("-DC"), QStringLiteral("--defined-only"), QStringLiteral("-j"), library});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return tests::lines(outcome.output);
}

QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What the headers of these folders mark as public: classes and functions, without their namespaces.
QSet<QString> markedNames(const QStringList& folders)
{
    static const QRegularExpression aClass(QStringLiteral("(?:class|struct) TL_EXPORT (\\w+)"));
    static const QRegularExpression aFunction(QStringLiteral("TL_EXPORT [^;({]*?(\\w+)\\("));
    static const QRegularExpression aValue(QStringLiteral("TL_EXPORT (?:extern )?const [\\w ]+? (\\w+)(?:\\[\\])?;"));
    QSet<QString> names;
    for (const QString& folder : folders) {
        QDirIterator header(QStringLiteral(PROJECT_FOLDER "/") + folder, {QStringLiteral("*.h")}, QDir::Files);
        while (header.hasNext()) {
            const QString text = textOf(header.next());
            for (const auto& mark : {aClass, aFunction, aValue}) {
                for (auto found = mark.globalMatch(text); found.hasNext();)
                    names.insert(found.next().captured(1));
            }
        }
    }
    return names;
}

/// "vtable for platform::Window" and "non-virtual thunk to platform::Window::close()" are about "Window".
QString markedNameOf(const QString& symbol)
{
    static const QRegularExpression form(QStringLiteral("^(?:vtable for |typeinfo for |typeinfo name for |VTT for "
                                                        "|guard variable for |(?:non-virtual|virtual) thunk to )?"
                                                        "(?:(?:platform|UIViewStyle|FileManager)::)*(\\w+)"));
    return form.match(symbol).captured(1);
}

QStringList unmarked(const QStringList& symbols, const QSet<QString>& marked)
{
    QStringList others;
    for (const QString& symbol : symbols) {
        if (!marked.contains(markedNameOf(symbol)))
            others.append(symbol);
    }
    return others;
}

const QStringList clientFolders = {QStringLiteral("platform/foundation"), QStringLiteral("constants"),
                                   QStringLiteral("records"), QStringLiteral("client")};
const QStringList windowFolders = {QStringLiteral("platform/toolkit"), QStringLiteral("upload"),
                                   QStringLiteral("download"), QStringLiteral("shell"), QStringLiteral("framework")};

TEST(Symbols, areThoseThatTheHeadersMark)
{
    EXPECT_THAT(unmarked(exportedSymbols(clientLibrary), markedNames(clientFolders)), IsEmpty());
    EXPECT_THAT(unmarked(exportedSymbols(windowLibrary), markedNames(windowFolders)), IsEmpty());
}

TEST(Symbols, ofOneLibraryAreNotInTheOther)
{
    const QStringList first = exportedSymbols(clientLibrary);
    const QSet<QString> ofClient(first.begin(), first.end());
    QStringList twice;
    for (const QString& symbol : exportedSymbols(windowLibrary)) {
        if (ofClient.contains(symbol))
            twice.append(symbol);
    }
    EXPECT_THAT(twice, IsEmpty());
}

TEST(Symbols, includeEveryPublicClass)
{
    QSet<QString> published;
    for (const QString& symbol : exportedSymbols(clientLibrary) + exportedSymbols(windowLibrary))
        published.insert(markedNameOf(symbol));
    static const QRegularExpression aClass(QStringLiteral("(?:class|struct) TL_EXPORT (\\w+)"));
    QStringList missing;
    int classes = 0;
    QDirIterator header(QStringLiteral(HEADER_FOLDER), {QStringLiteral("*.h")}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (header.hasNext()) {
        for (auto found = aClass.globalMatch(textOf(header.next())); found.hasNext(); ++classes) {
            const QString name = found.next().captured(1);
            if (!published.contains(name))
                missing.append(name);
        }
    }
    EXPECT_GT(classes, 30);
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Symbols, includeTheConstants)
{
    static const QRegularExpression aConstant(QStringLiteral("^k[A-Z]\\w+$"));
    QStringList constants = exportedSymbols(clientLibrary).filter(aConstant);
    constants.sort();
    QStringList expected;
    for (const char* name : {"kAttachFilePath",  "kAvatarUrl48",       "kAvatarUrls",   "kClearCache",
                             "kCurrentUserPath", "kDispayName",        "kEmailAddress", "kFailedLoginCount",
                             "kGetIssue",        "kJiraURL",           "kKey",          "kLastFailedLoginTime",
                             "kLoginCount",      "kLoginInfo",         "kLoginURLPath", "kName",
                             "kPrefixDirectory", "kPreviousLoginTime", "kSession",      "kSessionName",
                             "kSessionValue",    "kTimeZone",          "kUserPath"})
        expected.append(QString::fromLatin1(name));
    ASSERT_EQ(expected.size(), 23);
    EXPECT_THAT(constants, ElementsAreArray(expected));
}

TEST(Symbols, includeTheVersionOnce)
{
    const QStringList version = {QStringLiteral("TLJiraControllerVersionNumber"),
                                 QStringLiteral("TLJiraControllerVersionString")};
    EXPECT_THAT(exportedSymbols(windowLibrary), IsSupersetOf(version));
    EXPECT_EQ(exportedSymbols(clientLibrary).filter(QStringLiteral("Version")), QStringList());
}

} // namespace
