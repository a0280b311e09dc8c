#include "client/tasks/FileDocument.h"

#include "tests/kit/Files.h"
#include "tests/kit/Printers.h"

#include <QBuffer>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <stdexcept>
#include <sys/stat.h>
#include <thread>

namespace {

namespace FileDocument = client::FileDocument;
using testing::ThrowsMessage;

class FileDocumentTest : public testing::Test
{
protected:
    FileDocumentTest() { EXPECT_TRUE(buffer.open(QBuffer::WriteOnly)); }

    bool copy(const QString& source) { return FileDocument::of(QStringLiteral("plan"), source).writer(buffer); }

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("document"));
    QBuffer buffer;
};

TEST_F(FileDocumentTest, hasTheNameThatItIsGivenAndTheBytesOfItsFile)
{
    // Of several pieces.
    const QByteArray contents = QByteArray(1 << 20, 'w') + "weft";
    tests::writeFile(path, contents);

    EXPECT_EQ(FileDocument::of(QStringLiteral("plan"), path).name, QStringLiteral("plan"));
    EXPECT_TRUE(copy(path));
    EXPECT_EQ(buffer.data(), contents);
}

TEST_F(FileDocumentTest, isReadAnewEachTime)
{
    tests::writeFile(path, "warp");
    const TLJiraDocument document = FileDocument::of(QStringLiteral("plan"), path);
    EXPECT_TRUE(document.writer(buffer));
    tests::writeFile(path, "weft");
    EXPECT_TRUE(document.writer(buffer));

    EXPECT_EQ(buffer.data(), QByteArray("warpweft"));
}

TEST_F(FileDocumentTest, maySomeoneStillWriteIt)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    std::thread writer([this] {
        QFile pipe(path);
        EXPECT_TRUE(pipe.open(QFile::WriteOnly | QFile::Unbuffered));
        EXPECT_EQ(pipe.write("warp"), 4);
        EXPECT_EQ(pipe.write("weft"), 4);
    });
    EXPECT_TRUE(copy(path));
    writer.join();

    EXPECT_EQ(buffer.data(), QByteArray("warpweft"));
}

TEST_F(FileDocumentTest, saysWhyThereIsNone)
{
    EXPECT_THAT([this] { copy(QStringLiteral("/nowhere/plan")); },
                ThrowsMessage<std::runtime_error>("No such file or directory"));
}

TEST_F(FileDocumentTest, saysWhyItCannotBeRead)
{
    // A file that can be opened, and whose first page nobody can read.
    EXPECT_THAT([this] { copy(QStringLiteral("/proc/self/mem")); },
                ThrowsMessage<std::runtime_error>("Input/output error"));
}

/// Takes bytes while the file goes, but for so many.
class Shortening : public QIODevice
{
public:
    Shortening(const QString& path, qint64 left)
        : m_path(path)
        , m_left(left)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 length) override
    {
        QFile::resize(m_path, m_left);
        return length;
    }

private:
    const QString m_path;
    const qint64 m_left;
};

TEST_F(FileDocumentTest, saysThatItBecameShorterMeanwhile)
{
    constexpr qint64 size = 3 << 20;
    for (const qint64 left : {qint64(1), size - 1}) {
        tests::writeFile(path, QByteArray(size, 'w'));
        Shortening device(path, left);
        EXPECT_THAT([&] { FileDocument::of(QStringLiteral("plan"), path).writer(device); },
                    ThrowsMessage<std::runtime_error>("The file became shorter while it was being read."))
            << left;
    }
}

TEST_F(FileDocumentTest, isNotCopiedWhereThereIsNoRoom)
{
    tests::writeFile(path, "warp");
    QBuffer closed;
    ASSERT_TRUE(closed.open(QBuffer::ReadOnly));
    EXPECT_FALSE(FileDocument::of(QStringLiteral("plan"), path).writer(closed));
}

TEST_F(FileDocumentTest, callsNothingOfTheHost)
{
    EXPECT_FALSE(FileDocument::isWrittenByHost(FileDocument::of(QStringLiteral("plan"), path)));
    EXPECT_FALSE(FileDocument::isWrittenByHost({QStringLiteral("plan"), QByteArray("warp")}));
    EXPECT_TRUE(FileDocument::isWrittenByHost({QStringLiteral("plan"), [](QIODevice&) { return true; }}));
}

} // namespace
