#include "client/MultipartBody.h"
#include "tests/kit/Printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using client::multipartBody;

const QString type = QStringLiteral("application/octet-stream");
const QByteArray boundary = "-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-16f8d24075108476";

QByteArray formWith(const QByteArray& fileName, const QByteArray& bytes)
{
    return "--" + boundary + "\r\nContent-Disposition: form-data; name=file; filename=" + fileName +
           "\r\nContent-Type: application/octet-stream\r\n\r\n" + bytes + "\r\n--" + boundary + "--\r\n";
}

TEST(MultipartBody, hasOneFieldWithTheBytes)
{
    EXPECT_EQ(multipartBody(tljira::Data("bytes\r\n"), QStringLiteral("a.bin"), type).bytes(),
              formWith("a.bin", "bytes\r\n"));
    EXPECT_EQ(QByteArray(client::multipartBoundary.data(), client::multipartBoundary.size()), boundary);
}

TEST(MultipartBody, hasAFieldForAFileOfNoOrOneByte)
{
    EXPECT_EQ(multipartBody(tljira::Data(), QStringLiteral("a.bin"), type).bytes(), formWith("a.bin", ""));
    EXPECT_EQ(multipartBody(tljira::Data(QByteArray(1, '\0')), QStringLiteral("a.bin"), type).bytes(),
              formWith("a.bin", QByteArray(1, '\0')));
}

TEST(MultipartBody, isOnlyTheClosingLineWithoutBytes)
{
    EXPECT_EQ(multipartBody(std::nullopt, QStringLiteral("a.bin"), type).bytes(), "--" + boundary + "--\r\n");
}

TEST(MultipartBody, hasNamesUnquotedAndInUtf8)
{
    for (const char* name : {"My Plan.tessaloom", "a;b.bin", "a\"b\".bin", "Größe – Планы.bin", "100%@.bin", ""})
        EXPECT_EQ(multipartBody(tljira::Data("B"), QString::fromUtf8(name), type).bytes(), formWith(name, "B"));
}

TEST(MultipartBody, hasThePlaceholderOfNothingForAMissingName)
{
    EXPECT_EQ(multipartBody(tljira::Data("B"), std::nullopt, type).bytes(), formWith("(null)", "B"));
}

TEST(MultipartBody, countsAFileBeyondFourGibibytesWithoutReadingIt)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("large")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const qint64 size = (qint64(4) << 30) + 1;
    ASSERT_TRUE(file.resize(size));

    const auto bytes = tljira::Data::contentsOfFile(file.fileName());
    ASSERT_TRUE(bytes);
    const tljira::Data form = multipartBody(bytes, QStringLiteral("large"), type);
    EXPECT_EQ(form.size(), formWith("large", "").size() + size);
}

} // namespace
