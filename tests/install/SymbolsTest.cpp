#include "tests/kit/RunProgram.h"

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
const QString commandLineTool = QStringLiteral(INSTALL_PREFIX "/bin/tljira");

/// Demangled names, without the version. `which` of them is an option of nm.
QStringList symbols(const QString& file, const char* which)
{
    const auto outcome = tests::runProgram(QStringLiteral("nm"),
                                           {QStringLiteral("-DC"), QLatin1String(which), QStringLiteral("-j"), file});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return tests::lines(outcome.output);
}

QStringList exportedSymbols(const QString& library)
{
    return symbols(library, "--defined-only");
}

QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What the installed headers of these folders mark as public: classes and functions, without their namespaces.
QSet<QString> publicNames(const QStringList& folders)
{
    static const QRegularExpression aClass(QStringLiteral("(?:class|struct) TL_EXPORT (\\w+)"));
    static const QRegularExpression aFunction(QStringLiteral("TL_EXPORT [^;({]*?(\\w+)\\("));
    static const QRegularExpression aValue(
        QStringLiteral("TL_EXPORT (?:extern )?const [\\w&]+(?: [\\w&]+)*? (\\w+)(?:\\[\\])?;"));
    QSet<QString> names;
    for (const QString& folder : folders) {
        QDirIterator header(QStringLiteral(HEADER_FOLDER "/") + folder, {QStringLiteral("*.h")}, QDir::Files,
                            QDirIterator::Subdirectories);
        EXPECT_TRUE(header.hasNext()) << folder.toStdString();
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

/// "vtable for tljira::Window" and "non-virtual thunk to tljira::Window::close()" are about "Window".
QString markedNameOf(const QString& symbol)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:vtable for |typeinfo for |typeinfo name for |VTT for "
                       "|guard variable for |(?:non-virtual|virtual) thunk to )?"
                       "(?:(?:tljira|UIViewStyle|FileManager|client|os|records)::)*(\\w+)"));
    return form.match(symbol).captured(1);
}

QSet<QString> namesOf(const QStringList& all)
{
    QSet<QString> names;
    for (const QString& symbol : all)
        names.insert(markedNameOf(symbol));
    return names;
}

/// Names that a library exports although no installed header of these folders has them.
QStringList unpublished(const QString& library, const QStringList& folders)
{
    QStringList names = (namesOf(exportedSymbols(library)) - publicNames(folders)).values();
    names.sort();
    return names;
}

const QStringList clientFolders = {QStringLiteral("platform/foundation"), QStringLiteral("constants"),
                                   QStringLiteral("records"), QStringLiteral("client")};
const QStringList windowFolders = {QStringLiteral("platform/toolkit"), QStringLiteral("upload"),
                                   QStringLiteral("download"), QStringLiteral("shell"), QStringLiteral("framework")};

/// What the window library and the command-line tool share with the client library, and nobody else.
const QStringList internalNames =
    QStringLiteral(
        "DateFormatter DocumentCopy FetchedFile FileDocument GlobalQueue Keyring MainQueue ScratchFolder "
        "SingleEnd "
        "TransferListener URL "
        "UserDefaults "
        "appendingPathComponent appendingPathExtension attached baseOf canBeAttachmentName "
        "createDirectoryAtPath deletingLastPathComponent deletingPathExtension documentsAmong documentsNewestFirst "
        "failure "
        "fileNameFromUntrustedText filesBelowPath formatArguments isLogHeard isLoginUnread isNewer isSameServer "
        "lastPathComponent "
        "moveItemAtPath notTheDocument pathExtension readLogin "
        "removeItemAtPath removeLeftovers savedLogin savedToken secretsInMemory serverSentence setKeyringEntry "
        "takeBackLogin temporaryDirectory usesKeyring withoutTokens writeError writeLog")
        .split(u' ');

TEST(Symbols, areThoseOfThePublicHeaders)
{
    EXPECT_THAT(unpublished(windowLibrary, windowFolders), IsEmpty());
    EXPECT_EQ(unpublished(clientLibrary, clientFolders), internalNames);
}

TEST(Symbols, thatAreInternalAreNeeded)
{
    const QSet<QString> needed =
        namesOf(symbols(windowLibrary, "--undefined-only") + symbols(commandLineTool, "--undefined-only"));
    for (const QString& name : internalNames)
        EXPECT_TRUE(needed.contains(name)) << name.toStdString();
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
    const QStringList exported = exportedSymbols(clientLibrary) + exportedSymbols(windowLibrary);
    const QSet<QString> published = namesOf(exported);
    const QString allExported = exported.join(u'\n');
    static const QRegularExpression aClass(QStringLiteral("(?:class|struct) TL_EXPORT (\\w+)"));
    QStringList missing;
    int classes = 0;
    QDirIterator header(QStringLiteral(HEADER_FOLDER), {QStringLiteral("*.h")}, QDir::Files,
                        QDirIterator::Subdirectories);
    while (header.hasNext()) {
        for (auto found = aClass.globalMatch(textOf(header.next())); found.hasNext(); ++classes) {
            const QString name = found.next().captured(1);
            const bool isInsideAnother = allExported.contains(QStringLiteral("::%1::").arg(name));
            if (!published.contains(name) && !isInsideAnother)
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

TEST(Symbols, thatAProgramMayHaveItselfAreAskedOfNobody)
{
    static const QRegularExpression aConstant(QStringLiteral("^k[A-Z]\\w+$"));
    EXPECT_THAT(symbols(windowLibrary, "--undefined-only").filter(aConstant), IsEmpty());
    EXPECT_THAT(symbols(clientLibrary, "--undefined-only").filter(aConstant), IsEmpty());
}

TEST(Symbols, includeTheVersionOnce)
{
    const QStringList version = {QStringLiteral("TLJiraControllerVersionNumber"),
                                 QStringLiteral("TLJiraControllerVersionString")};
    EXPECT_THAT(exportedSymbols(windowLibrary), IsSupersetOf(version));
    EXPECT_EQ(exportedSymbols(clientLibrary).filter(QStringLiteral("Version")), QStringList());
}

} // namespace
