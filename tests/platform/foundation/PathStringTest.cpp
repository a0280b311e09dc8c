#include "platform/foundation/files/PathString.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace tljira;

QString text(const char16_t* characters)
{
    return QString::fromUtf16(characters);
}

TEST(PathString, appendsAComponent)
{
    const auto append = [](const char16_t* path, const char16_t* component) {
        return appendingPathComponent(text(path), text(component));
    };
    EXPECT_EQ(append(u"/tmp", u"scratch.tiff"), text(u"/tmp/scratch.tiff"));
    EXPECT_EQ(append(u"/tmp/", u"scratch.tiff"), text(u"/tmp/scratch.tiff"));
    EXPECT_EQ(append(u"/", u"scratch.tiff"), text(u"/scratch.tiff"));
    EXPECT_EQ(append(u"", u"scratch.tiff"), text(u"scratch.tiff"));
    EXPECT_EQ(append(u"/tmp", u"lock/"), text(u"/tmp/lock"));
    EXPECT_EQ(append(u"/tmp//a/", u"//b///c//"), text(u"/tmp/a/b/c"));
    EXPECT_EQ(append(u"/tmp", u""), text(u"/tmp"));
    EXPECT_EQ(append(u"/", u""), text(u"/"));
    EXPECT_EQ(append(u"", u""), QString());
    EXPECT_EQ(append(u"", u"//"), text(u"/"));
}

TEST(PathString, addressesKeepTheirTwoSlashes)
{
    EXPECT_EQ(appendingPathComponent(text(u"https://host/"), text(u"rest/api")), text(u"https://host/rest/api"));
    EXPECT_EQ(appendingPathComponent(text(u"https://host"), text(u"/rest//api/")), text(u"https://host/rest/api"));
    EXPECT_EQ(appendingPathComponent(text(u"/a://b"), text(u"c")), text(u"/a:/b/c"));
    EXPECT_EQ(appendingPathComponent(text(u"://b"), text(u"c")), text(u":/b/c"));
}

TEST(PathString, appendsAnExtension)
{
    const auto append = [](const char16_t* path) { return appendingPathExtension(text(path), QStringLiteral("tiff")); };
    EXPECT_EQ(append(u"/tmp/scratch.old"), text(u"/tmp/scratch.old.tiff"));
    EXPECT_EQ(append(u"/tmp/scratch."), text(u"/tmp/scratch..tiff"));
    EXPECT_EQ(append(u"/tmp/"), text(u"/tmp.tiff"));
    EXPECT_EQ(append(u"scratch"), text(u"scratch.tiff"));
    EXPECT_EQ(append(u""), QString());
    EXPECT_EQ(append(u"/"), text(u"/"));
}

TEST(PathString, deletesTheExtension)
{
    const auto deleted = [](const char16_t* path) { return deletingPathExtension(text(path)); };
    EXPECT_EQ(deleted(u"/tmp/scratch.tiff"), text(u"/tmp/scratch"));
    EXPECT_EQ(deleted(u"/tmp/"), text(u"/tmp"));
    EXPECT_EQ(deleted(u"scratch.bundle/"), text(u"scratch"));
    EXPECT_EQ(deleted(u"scratch..tiff"), text(u"scratch."));
    EXPECT_EQ(deleted(u".tiff"), text(u".tiff"));
    EXPECT_EQ(deleted(u"/"), text(u"/"));
    EXPECT_EQ(deleted(u"a."), text(u"a"));
    EXPECT_EQ(deleted(u"/v1.2/file"), text(u"/v1.2/file"));
    EXPECT_EQ(deleted(u""), QString());
    EXPECT_EQ(deleted(u"/a/.."), text(u"/a/.."));
}

TEST(PathString, tellsTheExtension)
{
    const auto extension = [](const char16_t* path) { return pathExtension(text(path)); };
    EXPECT_EQ(extension(u"/tmp/scratch.tiff"), text(u"tiff"));
    EXPECT_EQ(extension(u".scratch.tiff"), text(u"tiff"));
    EXPECT_EQ(extension(u".tessaloom"), QString());
    EXPECT_EQ(extension(u"a."), QString());
    EXPECT_EQ(extension(u"/tmp/"), QString());
    EXPECT_EQ(extension(u"/v1.2/file"), QString());
    EXPECT_EQ(extension(u"x.bundle/"), text(u"bundle"));
    EXPECT_EQ(extension(u".."), QString());
    EXPECT_EQ(extension(u""), QString());
}

TEST(PathString, deletesTheLastComponent)
{
    const auto deleted = [](const char16_t* path) { return deletingLastPathComponent(text(path)); };
    EXPECT_EQ(deleted(u"/tmp/scratch.tiff"), text(u"/tmp"));
    EXPECT_EQ(deleted(u"/tmp/lock/"), text(u"/tmp"));
    EXPECT_EQ(deleted(u"/tmp"), text(u"/"));
    EXPECT_EQ(deleted(u"/"), text(u"/"));
    EXPECT_EQ(deleted(u"scratch.tiff"), QString());
    EXPECT_EQ(deleted(u"a//b"), text(u"a"));
    EXPECT_EQ(deleted(u"//tmp"), text(u"/"));
    EXPECT_EQ(deleted(u""), QString());
}

TEST(PathString, tellsTheLastComponent)
{
    const auto last = [](const char16_t* path) { return lastPathComponent(text(path)); };
    EXPECT_EQ(last(u"/tmp/scratch.tiff"), text(u"scratch.tiff"));
    EXPECT_EQ(last(u"/tmp/lock///"), text(u"lock"));
    EXPECT_EQ(last(u"scratch"), text(u"scratch"));
    EXPECT_EQ(last(u"/"), text(u"/"));
    EXPECT_EQ(last(u"///"), text(u"/"));
    EXPECT_EQ(last(u""), QString());
}

TEST(PathString, untrustedNamesBecomeOneComponent)
{
    const auto safe = [](const char16_t* name) { return fileNameFromUntrustedText(text(name)); };
    EXPECT_EQ(safe(u"report 1.pdf"), text(u"report 1.pdf"));
    EXPECT_EQ(safe(u"../../etc/passwd"), text(u".._.._etc_passwd"));
    EXPECT_EQ(safe(u"/"), text(u"_"));
    EXPECT_EQ(safe(u"."), text(u"_"));
    EXPECT_EQ(safe(u".."), text(u"_"));
    EXPECT_EQ(safe(u""), text(u"_"));
    EXPECT_EQ(safe(u"..."), text(u"..."));
    EXPECT_EQ(safe(u".hidden"), text(u".hidden"));
    EXPECT_EQ(safe(u"a\nb\tc\u007f\u0085"), text(u"a_b_c__"));
    EXPECT_EQ(fileNameFromUntrustedText(QString(QChar(u'\0'))), text(u"_"));
    EXPECT_EQ(safe(u" a\\b:c "), text(u" a\\b:c "));
}

TEST(PathString, longUntrustedNamesKeepTheirExtension)
{
    const QString exact = QString(251, u'a') + text(u".pdf");
    EXPECT_EQ(fileNameFromUntrustedText(exact), exact);
    EXPECT_EQ(fileNameFromUntrustedText(QString(252, u'a') + text(u".pdf")), exact);
    EXPECT_EQ(fileNameFromUntrustedText(QString(300, u'a')), QString(255, u'a'));
}

TEST(PathString, longUntrustedNamesAreCutBetweenCharacters)
{
    // 251 bytes are left for 84 characters of three bytes each.
    EXPECT_EQ(fileNameFromUntrustedText(QString(100, QChar(u'\u20ac')) + text(u".pdf")),
              QString(83, QChar(u'\u20ac')) + text(u".pdf"));
    const QString faces = text(u"\U0001F600").repeated(80);
    EXPECT_EQ(fileNameFromUntrustedText(faces), text(u"\U0001F600").repeated(63));
    EXPECT_EQ(fileNameFromUntrustedText(text(u"a.") + QString(300, u'x')), text(u"a.") + QString(253, u'x'));
}

TEST(PathString, aFileNameHasNoCharactersThatTurnTheDirectionOfWriting)
{
    using tljira::fileNameFromUntrustedText;
    const QString turned = QStringLiteral("plan\u202Egpj.exe");
    EXPECT_EQ(fileNameFromUntrustedText(turned), QStringLiteral("plangpj.exe"));
    for (const char16_t c :
         {u'\u202A', u'\u202B', u'\u202C', u'\u202D', u'\u202E', u'\u2066', u'\u2067', u'\u2068', u'\u2069'}) {
        EXPECT_EQ(fileNameFromUntrustedText(QString(QChar(c)) + u'a' + QChar(c)), QStringLiteral("a"));
        EXPECT_EQ(fileNameFromUntrustedText(QString(QChar(c))), QStringLiteral("_"));
        EXPECT_EQ(fileNameFromUntrustedText(u'.' + QString(QChar(c)) + u'.'), QStringLiteral("_"));
    }
    // The neighbours belong to writing.
    for (const char16_t c : {u'\u2029', u'\u202F', u'\u2065', u'\u206A', u'\u200F', u'\u200D'})
        EXPECT_EQ(fileNameFromUntrustedText(QString(QChar(c)) + u'a'), QString(QChar(c)) + u'a');
}

} // namespace
