#include "platform/foundation/values/Data.h"

#include "tests/kit/Printers.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using tljira::Data;
using tljira::DataReader;

class DataTest : public testing::Test
{
protected:
    QString fileWith(const QByteArray& bytes)
    {
        const QString path = folder.filePath(QStringLiteral("file"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path;
    }

    /// Times of files may be counted in steps longer than a test takes.
    static void makeOld(const QString& path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    }

    static QByteArray readInStepsOf(DataReader& reader, qint64 step)
    {
        QByteArray all;
        QByteArray buffer(step, '\0');
        for (qint64 count = reader.read(buffer.data(), step); count > 0; count = reader.read(buffer.data(), step))
            all += buffer.first(count);
        return all;
    }

    QTemporaryDir folder;
};

TEST_F(DataTest, isEmptyAtFirst)
{
    EXPECT_TRUE(Data().isEmpty());
    EXPECT_EQ(Data().bytes(), QByteArray());
    EXPECT_EQ(Data().utf8Text(), QString());
}

TEST_F(DataTest, holdsBytesInMemory)
{
    const Data data(QByteArray("a\0b", 3));
    EXPECT_EQ(data.size(), 3);
    EXPECT_EQ(data.bytes(), QByteArray("a\0b", 3));
}

TEST_F(DataTest, holdsAFile)
{
    const auto data = Data::contentsOfFile(fileWith("of a file"));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->size(), 9);
    EXPECT_EQ(data->bytes(), QByteArray("of a file"));
}

TEST_F(DataTest, holdsAnEmptyFile)
{
    const auto data = Data::contentsOfFile(fileWith({}));
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->isEmpty());
    EXPECT_EQ(data->bytes(), QByteArray());
}

TEST_F(DataTest, isNothingForWhatIsNoReadableFile)
{
    EXPECT_FALSE(Data::contentsOfFile(folder.filePath(QStringLiteral("missing"))));
    EXPECT_FALSE(Data::contentsOfFile(folder.path()));
    EXPECT_FALSE(Data::contentsOfFile(QString()));
    EXPECT_FALSE(Data::contentsOfFile(QStringLiteral("/dev/null")));
}

TEST_F(DataTest, keepsTheFileThatWasOpenedWhenItsNameGoes)
{
    const QString path = fileWith("the first");
    const auto data = Data::contentsOfFile(path);
    ASSERT_TRUE(QFile::remove(path));
    fileWith("another");
    EXPECT_EQ(data->bytes(), QByteArray("the first"));
}

TEST_F(DataTest, joinsPiecesInOrder)
{
    Data data(QByteArray("head "));
    data.append(*Data::contentsOfFile(fileWith("file"))).append(QByteArray()).append(QByteArray(" tail"));
    EXPECT_EQ(data.size(), 14);
    EXPECT_EQ(data.bytes(), QByteArray("head file tail"));
    data.append(data);
    EXPECT_EQ(data.bytes(), QByteArray("head file tailhead file tail"));
}

TEST_F(DataTest, isNotChangedByWhatIsAppendedToACopy)
{
    const Data data(QByteArray("a"));
    Data copy = data;
    copy.append(QByteArray("b"));
    EXPECT_EQ(data.bytes(), QByteArray("a"));
    EXPECT_EQ(copy.bytes(), QByteArray("ab"));
}

TEST_F(DataTest, isTextOnlyWhenItIsUtf8)
{
    EXPECT_EQ(Data(QByteArray("gr\xc3\xbc\xc3\x9f")).utf8Text(), QStringLiteral("grüß"));
    EXPECT_EQ(Data(QByteArray("\xff\xfe")).utf8Text(), std::nullopt);
    EXPECT_EQ(Data(QByteArray("cut \xc3")).utf8Text(), std::nullopt);
}

TEST_F(DataTest, isReadInStepsOfAnySize)
{
    Data data(QByteArray("head "));
    data.append(*Data::contentsOfFile(fileWith("file"))).append(QByteArray(" tail"));
    for (qint64 step = 1; step <= 20; ++step) {
        DataReader reader(data);
        EXPECT_EQ(readInStepsOf(reader, step), QByteArray("head file tail")) << step;
        EXPECT_FALSE(reader.error());
    }
}

TEST_F(DataTest, isReadByTwoReadersAtTheSameTime)
{
    const Data data = *Data::contentsOfFile(fileWith("0123456789"));
    DataReader first(data);
    DataReader second(data);
    char byte = 0;
    for (const char expected : QByteArray("0123456789")) {
        ASSERT_EQ(first.read(&byte, 1), 1);
        EXPECT_EQ(byte, expected);
        ASSERT_EQ(second.read(&byte, 1), 1);
        EXPECT_EQ(byte, expected);
    }
}

TEST_F(DataTest, saysSoWhenAFileGivesLessThanItHeld)
{
    const QString path = fileWith("0123456789");
    const Data data = *Data::contentsOfFile(path);
    ASSERT_TRUE(QFile::resize(path, 4));
    DataReader reader(data);
    char buffer[16];
    EXPECT_EQ(reader.read(buffer, sizeof buffer), -1);
    ASSERT_TRUE(reader.error());
    EXPECT_EQ(reader.error()->domain, QStringLiteral("NSCocoaErrorDomain"));
    EXPECT_EQ(reader.error()->code, 256);
    EXPECT_EQ(reader.error()->localizedDescription(),
              QStringLiteral("The file “file” became shorter or unreadable while it was being read."));
    EXPECT_EQ(data.bytes(), std::nullopt);
}

TEST_F(DataTest, saysSoWhenAFileWasWrittenToSinceItWasOpened)
{
    const QString path = fileWith("0123456789");
    const auto append = [](QFile& file) { return file.open(QIODevice::Append) && file.write("x") == 1; };
    const auto overwrite = [](QFile& file) {
        return file.open(QIODevice::ReadWrite) && file.seek(3) && file.write("x") == 1;
    };
    for (const std::function<bool(QFile&)>& change : {std::function<bool(QFile&)>(append), {overwrite}}) {
        fileWith("0123456789");
        makeOld(path);
        const Data data = *Data::contentsOfFile(path);
        DataReader reader(data);
        char buffer[16];
        ASSERT_EQ(reader.read(buffer, 5), 5);
        QFile file(path);
        ASSERT_TRUE(change(file));
        file.close();
        EXPECT_EQ(reader.read(buffer, sizeof buffer), -1);
        ASSERT_TRUE(reader.error());
        EXPECT_EQ(reader.error()->domain, QStringLiteral("NSCocoaErrorDomain"));
        EXPECT_EQ(reader.error()->code, 256);
        EXPECT_EQ(reader.error()->localizedDescription(),
                  QStringLiteral("The file “file” was changed while it was being read."));
        EXPECT_EQ(data.bytes(), std::nullopt);
    }
}

TEST_F(DataTest, tellsWhetherItsFilesAreAsTheyWere)
{
    const QString path = fileWith("0123");
    makeOld(path);
    Data data(QByteArray("head "));
    EXPECT_TRUE(DataReader(data).filesAreUnchanged());
    data.append(*Data::contentsOfFile(path));
    DataReader reader(data);
    EXPECT_TRUE(reader.filesAreUnchanged());
    EXPECT_FALSE(reader.error());
    fileWith("4567");
    EXPECT_FALSE(reader.filesAreUnchanged());
    ASSERT_TRUE(reader.error());
    EXPECT_EQ(reader.error()->localizedDescription(),
              QStringLiteral("The file “file” was changed while it was being read."));
}

} // namespace
