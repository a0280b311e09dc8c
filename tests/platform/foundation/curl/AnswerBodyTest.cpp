#include "platform/foundation/loading/curl/AnswerBody.h"

#include "platform/foundation/files/TemporaryDirectory.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <zlib.h>

namespace {

using tljira::AnswerBody;

bool append(AnswerBody& body, const char* text)
{
    return body.append(text, std::strlen(text));
}

QByteArray gzipOf(const QByteArray& bytes)
{
    constexpr int gzipFormat = 16;
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, gzipFormat + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    QByteArray packed(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(bytes.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.truncate(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

QStringList temporaryFiles()
{
    return QDir(tljira::temporaryDirectory()).entryList(QDir::Files);
}

TEST(AnswerBody, isKeptInMemory)
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

TEST(AnswerBody, isKeptInAFileThatGoesWithItsOwner)
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

TEST(AnswerBody, isAFileAlsoWithoutAByte)
{
    AnswerBody body(AnswerBody::Destination::File);
    EXPECT_TRUE(temporaryFiles().isEmpty());
    EXPECT_TRUE(body.finish());
    EXPECT_EQ(temporaryFiles().size(), 1);
}

TEST(AnswerBody, leavesNoFileWhenItIsGivenUp)
{
    {
        AnswerBody body(AnswerBody::Destination::File);
        EXPECT_TRUE(append(body, "bytes"));
        EXPECT_EQ(temporaryFiles().size(), 1);
    }
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST(AnswerBody, leavesAFileThatWasMovedAway)
{
    AnswerBody body(AnswerBody::Destination::File);
    EXPECT_TRUE(body.finish());
    auto file = body.takeFile();
    const QString place = QDir::temp().filePath(QStringLiteral("moved"));
    ASSERT_TRUE(QFile::rename(file->path(), place));
    file.reset();
    EXPECT_TRUE(QFile::exists(place));
}

/// What is kept of a body that a server sent under this encoding; nothing for an error.
std::optional<QByteArray> keptUnder(const char* encoding, const QByteArray& bytes)
{
    AnswerBody body(AnswerBody::Destination::Memory);
    body.setContentEncoding(encoding);
    if (body.append(bytes.constData(), static_cast<std::size_t>(bytes.size())) && body.finish())
        return body.takeData().bytes();
    EXPECT_TRUE(body.error());
    EXPECT_EQ(body.error().value_or(tljira::Error()).code, -1016);
    return std::nullopt;
}

TEST(AnswerBody, packedInAWayThatCannotBeUnpackedIsAnError)
{
    for (const char* encoding : {"br", "Deflate", "compress", "zstd", "gzip, br", "gzip, gzip"})
        EXPECT_EQ(keptUnder(encoding, "bytes"), std::nullopt) << encoding;
}

TEST(AnswerBody, underAnEncodingThatIsNonePassesAsItIs)
{
    for (const char* encoding : {"", " Identity ", "UTF-8", "none", "binary", "utf-8, none"})
        EXPECT_EQ(keptUnder(encoding, "bytes"), QByteArray("bytes")) << encoding;
}

TEST(AnswerBody, isUnpackedWhateverStandsBesideItsEncoding)
{
    const QByteArray packed = gzipOf("bytes");
    for (const char* encoding : {"gzip", "X-GZIP", "UTF-8, gzip", "gzip, identity"}) {
        AnswerBody body(AnswerBody::Destination::Memory);
        body.setContentEncoding(encoding);
        EXPECT_TRUE(body.isPacked()) << encoding;
        EXPECT_EQ(keptUnder(encoding, packed), QByteArray("bytes")) << encoding;
    }
}

TEST(AnswerBody, inMemoryHasABoundThatCountsWhatIsUnpacked)
{
    const QByteArray part(1024 * 1024, 'x');
    AnswerBody body(AnswerBody::Destination::Memory);
    int taken = 0;
    while (taken < 200 && body.append(part.constData(), static_cast<std::size_t>(part.size())))
        ++taken;
    EXPECT_EQ(taken, 64);
    ASSERT_TRUE(body.error());
    EXPECT_EQ(body.error()->code, -1103);
    EXPECT_EQ(body.error()->localizedDescription(), QStringLiteral("The server’s answer is larger than 64 MiB."));

    AnswerBody packed(AnswerBody::Destination::Memory);
    packed.setContentEncoding("gzip");
    const QByteArray bomb = gzipOf(QByteArray(65 * 1024 * 1024, 'x'));
    EXPECT_FALSE(packed.append(bomb.constData(), static_cast<std::size_t>(bomb.size())));
    ASSERT_TRUE(packed.error());
    EXPECT_EQ(packed.error()->code, -1103);
    EXPECT_LE(packed.size(), 65 * 1024 * 1024);
}

TEST(AnswerBody, ofAPictureHasABoundOfItsOwn)
{
    const QByteArray part(1024 * 1024, 'x');
    for (const char* type : {"image/png", " Image/JPEG", "image/svg+xml; charset=utf-8"}) {
        AnswerBody body(AnswerBody::Destination::Memory);
        body.setContentType(type);
        int taken = 0;
        while (taken < 200 && body.append(part.constData(), static_cast<std::size_t>(part.size())))
            ++taken;
        EXPECT_EQ(taken, 4) << type;
        EXPECT_EQ(body.error().value_or(tljira::Error()).localizedDescription(),
                  QStringLiteral("The server’s answer is larger than 4 MiB."));
    }
}

TEST(AnswerBody, inAFileHasNoBound)
{
    const QByteArray part(16 * 1024 * 1024, 'x');
    AnswerBody body(AnswerBody::Destination::File);
    body.setContentType("image/png");
    for (int taken = 0; taken < 5; ++taken)
        ASSERT_TRUE(body.append(part.constData(), static_cast<std::size_t>(part.size())));
    EXPECT_TRUE(body.finish());
    EXPECT_EQ(body.size(), 80 * 1024 * 1024);
}

} // namespace
