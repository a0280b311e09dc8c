#include "platform/foundation/curl/AnswerBody.h"

#include "platform/foundation/TemporaryDirectory.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

using tljira::AnswerBody;

bool append(AnswerBody& body, const char* text)
{
    return body.append(text, std::strlen(text));
}

QStringList temporaryFiles()
{
    return QDir(tljira::temporaryDirectory()).entryList(QDir::Files);
}

TEST(AnswerBody, IsKeptInMemory)
{
    AnswerBody body(AnswerBody::Destination::Memory);
    EXPECT_TRUE(append(body, "one "));
    EXPECT_TRUE(append(body, "two"));
    EXPECT_TRUE(body.finish());
    EXPECT_EQ(body.size(), 7);
    EXPECT_EQ(body.takeFile(), nullptr);
    EXPECT_EQ(body.takeData().bytes(), QByteArray("one two"));
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST(AnswerBody, IsKeptInAFileThatGoesWithItsOwner)
{
    AnswerBody body(AnswerBody::Destination::File);
    EXPECT_TRUE(append(body, "bytes"));
    EXPECT_TRUE(body.finish());
    auto file = body.takeFile();
    ASSERT_NE(file, nullptr);
    QFile reader(file->path());
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    EXPECT_EQ(reader.readAll(), QByteArray("bytes"));
    EXPECT_FALSE(QFile::permissions(file->path()) & (QFile::ReadGroup | QFile::ReadOther));
    file.reset();
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST(AnswerBody, IsAFileAlsoWithoutAByte)
{
    AnswerBody body(AnswerBody::Destination::File);
    EXPECT_TRUE(temporaryFiles().isEmpty());
    EXPECT_TRUE(body.finish());
    EXPECT_EQ(temporaryFiles().size(), 1);
}

TEST(AnswerBody, LeavesNoFileWhenItIsGivenUp)
{
    {
        AnswerBody body(AnswerBody::Destination::File);
        EXPECT_TRUE(append(body, "bytes"));
        EXPECT_EQ(temporaryFiles().size(), 1);
    }
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST(AnswerBody, LeavesAFileThatWasMovedAway)
{
    AnswerBody body(AnswerBody::Destination::File);
    EXPECT_TRUE(body.finish());
    auto file = body.takeFile();
    const QString place = QDir::temp().filePath(QStringLiteral("moved"));
    ASSERT_TRUE(QFile::rename(file->path(), place));
    file.reset();
    EXPECT_TRUE(QFile::exists(place));
}

TEST(AnswerBody, InAnEncodingThatWasNotAskedForIsAnError)
{
    AnswerBody body(AnswerBody::Destination::Memory);
    body.setContentEncoding("br");
    EXPECT_FALSE(append(body, "bytes"));
    ASSERT_TRUE(body.error());
    EXPECT_EQ(body.error()->code, -1016);
}

TEST(AnswerBody, WithoutEncodingPassesAsItIs)
{
    AnswerBody body(AnswerBody::Destination::Memory);
    body.setContentEncoding(" Identity ");
    EXPECT_TRUE(append(body, "bytes"));
    EXPECT_TRUE(body.finish());
    EXPECT_EQ(body.takeData().bytes(), QByteArray("bytes"));
}

TEST(AnswerBody, InMemoryHasABound)
{
    AnswerBody body(AnswerBody::Destination::Memory);
    const QByteArray part(64 * 1024 * 1024, 'x');
    int taken = 0;
    while (taken < 20 && body.append(part.constData(), static_cast<std::size_t>(part.size())))
        ++taken;
    EXPECT_EQ(taken, 8);
    ASSERT_TRUE(body.error());
    EXPECT_EQ(body.error()->code, -1103);
}

} // namespace
