#include "platform/foundation/settings/UserDefaults.h"

#include "platform/foundation/os/FileLock.h"
#include "platform/foundation/values/JSON.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/NoDescriptors.h"
#include "tests/kit/OldFiles.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/foundation/FailingSync.h"
#include "tests/platform/foundation/RoomFor.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <thread>
#include <vector>

namespace {

using testing::Contains;
using testing::ElementsAre;
using tljira::UserDefaults;

const auto key = QStringLiteral("key");

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode & 07777;
}

class UserDefaultsTest : public testing::Test
{
protected:
    /// What is in the file when the writer has done its work.
    QByteArray bytes(UserDefaults& defaults) const
    {
        EXPECT_TRUE(defaults.synchronize());
        return bytes();
    }

    QByteArray bytes() const
    {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    ino_t inode() const
    {
        struct stat status = {};
        EXPECT_EQ(stat(QFile::encodeName(m_path).constData(), &status), 0);
        return status.st_ino;
    }

    void writePlainly(const QByteArray& content) const
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(m_path).path()));
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("app/userdefaults.json"));
};

TEST_F(UserDefaultsTest, beginEmptyAndWriteNothingByThemselves)
{
    const UserDefaults defaults(m_path);
    EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
    EXPECT_EQ(defaults.stringForKey(key), std::nullopt);
    EXPECT_FALSE(defaults.boolForKey(key));
    EXPECT_FALSE(QFileInfo::exists(m_path));
}

TEST_F(UserDefaultsTest, aValueIsVisibleAtOnceAndSurvives)
{
    UserDefaults defaults(m_path);
    const UserDefaults other(m_path);
    defaults.setObject(QStringLiteral("v\u20ac"), key);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("v\u20ac"));
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":\"v\xe2\x82\xac\"}"));
    EXPECT_EQ(other.stringForKey(key), QStringLiteral("v\u20ac"));
    EXPECT_EQ(UserDefaults(m_path).stringForKey(key), QStringLiteral("v\u20ac"));
}

TEST_F(UserDefaultsTest, settingNothingRemovesTheKey)
{
    UserDefaults defaults(m_path);
    defaults.setObject(1, QStringLiteral("stays"));
    for (const std::optional<QJsonValue>& nothing :
         {std::optional<QJsonValue>(), std::optional(QJsonValue()), std::optional(QJsonValue(QJsonValue::Undefined))}) {
        defaults.setObject(1, key);
        defaults.setObject(nothing, key);
        EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
        EXPECT_EQ(bytes(defaults), QByteArray("{\"stays\":1}"));
    }
    defaults.removeObjectForKey(QStringLiteral("stays"));
    EXPECT_EQ(bytes(defaults), QByteArray("{}"));
}

TEST_F(UserDefaultsTest, valuesOfEveryKind)
{
    UserDefaults defaults(m_path);
    const QJsonObject object{{QStringLiteral("a"), QJsonArray{1, QStringLiteral("x")}}};
    defaults.setObject(object, key);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(UserDefaults(m_path).objectForKey(key), QJsonValue(object));
    EXPECT_EQ(defaults.stringForKey(key), std::nullopt);
    defaults.setObject(Q_INT64_C(9223372036854775807), key);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(UserDefaults(m_path).objectForKey(key).value_or(QJsonValue()).toInteger(),
              Q_INT64_C(9223372036854775807));
}

TEST_F(UserDefaultsTest, numbersReadAsTexts)
{
    UserDefaults defaults(m_path);
    defaults.setObject(42, key);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("42"));
    defaults.setObject(0.5, key);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("0.5"));
    defaults.setObject(true, key);
    EXPECT_EQ(defaults.stringForKey(key), std::nullopt);
}

TEST_F(UserDefaultsTest, booleans)
{
    UserDefaults defaults(m_path);
    const auto boolOf = [&](const QJsonValue& value) {
        defaults.setObject(value, key);
        return defaults.boolForKey(key);
    };
    EXPECT_TRUE(boolOf(true));
    EXPECT_FALSE(boolOf(false));
    EXPECT_TRUE(boolOf(1));
    EXPECT_TRUE(boolOf(-2));
    EXPECT_TRUE(boolOf(0.1));
    EXPECT_FALSE(boolOf(0));
    for (const char16_t* text : {u"YES", u"yes", u"true", u"TRUE", u"1"})
        EXPECT_TRUE(boolOf(QString::fromUtf16(text)));
    for (const char16_t* text : {u"", u"NO", u"false", u"0", u"y", u"yes "})
        EXPECT_FALSE(boolOf(QString::fromUtf16(text)));
    EXPECT_FALSE(boolOf(QJsonArray{true}));
}

TEST_F(UserDefaultsTest, arePrivate)
{
    umask(0);
    UserDefaults(m_path).setObject(1, key);
    EXPECT_EQ(modeOf(m_path), 0600u);
    EXPECT_EQ(modeOf(QFileInfo(m_path).path()), 0700u);
}

TEST_F(UserDefaultsTest, theStandardOnesLieInTheConfigurationFolder)
{
    UserDefaults::standardUserDefaults().setObject(1, key);
    ASSERT_TRUE(UserDefaults::standardUserDefaults().synchronize());
    const QString path = QString::fromUtf8(qgetenv("XDG_CONFIG_HOME")) + QStringLiteral("/tests/userdefaults.json");
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_EQ(UserDefaults(path).objectForKey(key), QJsonValue(1));
    EXPECT_EQ(&UserDefaults::standardUserDefaults(), &UserDefaults::standardUserDefaults());
}

TEST_F(UserDefaultsTest, twoProcessesLoseNothing)
{
    constexpr int count = 100;
    const QStringList prefixes{QStringLiteral("a"), QStringLiteral("b")};
    // A reader on the side sees whole files only. On a thread of its own, begun first: the thread sanitizer no longer
    // sees the locks of one that has started a process through Qt.
    std::jthread reading([this](const std::stop_token& end) {
        const UserDefaults reader(m_path);
        while (!end.stop_requested()) {
            reader.objectForKey(key);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QString& prefix : prefixes) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(QStringLiteral(DEFAULTS_WRITER), {m_path, prefix, QString::number(count)});
    }
    ASSERT_TRUE(tests::waitUntil([&] {
        return std::all_of(processes.begin(), processes.end(),
                           [](const auto& process) { return process->state() == QProcess::NotRunning; });
    }));
    for (const auto& process : processes) {
        EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process->exitCode(), 0);
        // A very slow disk may make one wait for the other too long; what it has to write is written later.
        for (const QByteArray& line : process->readAllStandardError().split('\n'))
            EXPECT_TRUE(line.isEmpty() || line.endsWith("keeps it locked")) << line.toStdString();
    }
    const QJsonObject afterwards = tljira::decodeJSON(bytes()).value_or(QJsonValue()).toObject();
    for (const QString& prefix : prefixes) {
        for (int number = 0; number < count; ++number)
            EXPECT_EQ(afterwards.value(prefix + QString::number(number)), QJsonValue(number));
    }
    EXPECT_THAT(QDir(QFileInfo(m_path).path()).entryList(QDir::Files | QDir::Hidden),
                ElementsAre(QStringLiteral("userdefaults.json"), QStringLiteral("userdefaults.json.lock")));
}

TEST_F(UserDefaultsTest, threadsLoseNothing)
{
    UserDefaults defaults(m_path);
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&defaults, thread] {
                for (int number = 0; number < 20; ++number) {
                    const QString own = QStringLiteral("%1-%2").arg(thread).arg(number);
                    defaults.setObject(number, own);
                    EXPECT_EQ(defaults.objectForKey(own), QJsonValue(number));
                    defaults.boolForKey(QStringLiteral("0-0"));
                }
                defaults.synchronize();
            });
    }
    EXPECT_EQ(tljira::decodeJSON(bytes(defaults)).value_or(QJsonValue()).toObject().size(), 80);
}

TEST_F(UserDefaultsTest, aDamagedFileIsKeptAsideAndTheStoreStartsEmpty)
{
    const tests::LogCapture capture;
    const QString aside = m_path + QStringLiteral(".damaged-1");
    for (const QByteArray& damage : {QByteArray("{\"key\":1"), QByteArray(), QByteArray("[1]"), QByteArray("\xff")}) {
        capture.lines();
        writePlainly(damage);
        UserDefaults defaults(m_path);
        EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
        ASSERT_TRUE(defaults.synchronize());
        QFile kept(aside);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), damage);
        defaults.setObject(2, key);
        ASSERT_TRUE(defaults.synchronize());
        EXPECT_EQ(UserDefaults(m_path).objectForKey(key), QJsonValue(2));
        EXPECT_EQ(capture.lines().last(), m_path + QStringLiteral(" is damaged and was set aside as ") + aside);
        ASSERT_TRUE(kept.remove());
    }
    EXPECT_EQ(capture.lines().size(), 4);
}

TEST_F(UserDefaultsTest, writingOverADamagedFileKeepsItAsideToo)
{
    const tests::LogCapture capture;
    writePlainly("garbage");
    UserDefaults defaults(m_path);
    defaults.setObject(2, key);
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(2));
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":2}"));
    EXPECT_TRUE(QFileInfo::exists(m_path + QStringLiteral(".damaged-1")));
    EXPECT_EQ(capture.lines().size(), 1);
}

TEST_F(UserDefaultsTest, whatTheDiskRefusesStaysInMemoryAndIsTriedAgain)
{
    const tests::LogCapture capture;
    QFile obstacle(QFileInfo(m_path).path());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(defaults.failure(), QStringLiteral("its folder cannot be made"));
    EXPECT_EQ(capture.lines().last(), m_path + QStringLiteral(" could not be written: its folder cannot be made"));
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));

    ASSERT_TRUE(obstacle.remove());
    defaults.setObject(2, QStringLiteral("other"));
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":1,\"other\":2}"));
    EXPECT_EQ(defaults.failure(), std::nullopt);
}

TEST_F(UserDefaultsTest, synchronizeWritesWhatWasRefused)
{
    const tests::LogCapture capture;
    QFile obstacle(QFileInfo(m_path).path());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_FALSE(defaults.synchronize());
    ASSERT_TRUE(obstacle.remove());
    EXPECT_FALSE(QFileInfo::exists(m_path));
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":1}"));
}

TEST_F(UserDefaultsTest, anUnsavedRemovalDoesNotBringTheOldValueBack)
{
    const tests::LogCapture capture;
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    {
        const tests::FailingSync failing(1);
        defaults.removeObjectForKey(key);
        ASSERT_TRUE(tests::waitUntil([&] { return defaults.failure().has_value(); }));
        EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
    }
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
    EXPECT_EQ(bytes(defaults), QByteArray("{}"));
}

TEST_F(UserDefaultsTest, whatIsUnchangedIsNotWritten)
{
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    // A file that is written is another one.
    const ino_t before = inode();
    defaults.setObject(1, key);
    defaults.removeObjectForKey(QStringLiteral("missing"));
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(inode(), before);
    defaults.setObject(2, key);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_NE(inode(), before);
}

TEST_F(UserDefaultsTest, nobodyWaitsForALockButSynchronizeWhichSaysSo)
{
    const tests::LogCapture capture;
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting((m_path + QStringLiteral(".lock")).toStdString()));
    // What they set is read back while the lock is still held, which no thread here could release.
    for (int number = 0; number < 1000; ++number) {
        defaults.setObject(number, key);
        EXPECT_EQ(defaults.objectForKey(key), QJsonValue(number));
    }
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(defaults.failure(), QStringLiteral("another process keeps it locked"));
    EXPECT_THAT(capture.lines(), Contains(m_path + QStringLiteral(" could not be written yet: another process keeps it "
                                                                  "locked")));
    others.unlock();
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":999}"));
}

TEST_F(UserDefaultsTest, aFullDiskLeavesTheOldSettingsHoweverMuchRoomThereIs)
{
    const tests::LogCapture capture;
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    const QByteArray before = bytes(defaults);
    defaults.setObject(QString(200, u'x'), key);
    const QByteArray after = bytes(defaults);
    defaults.setObject(1, key);
    ASSERT_EQ(bytes(defaults), before);
    for (int room = 0; room < after.size(); ++room) {
        const tests::RoomFor disk(static_cast<rlim_t>(room));
        defaults.setObject(QString(200, u'x'), key);
        ASSERT_FALSE(defaults.synchronize()) << room;
        ASSERT_EQ(bytes(), before) << room;
    }
    EXPECT_EQ(bytes(defaults), after);
}

TEST_F(UserDefaultsTest, areWrittenWhenTheyEnd)
{
    UserDefaults(m_path).setObject(1, key);
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
}

TEST_F(UserDefaultsTest, takesUpWhatAnotherWrote)
{
    UserDefaults mine(m_path);
    UserDefaults theirs(m_path);
    mine.setObject(1, key);
    ASSERT_TRUE(mine.synchronize());
    theirs.setObject(2, key);
    ASSERT_TRUE(theirs.synchronize());
    EXPECT_TRUE(tests::waitUntil([&] { return mine.objectForKey(key) == QJsonValue(2); }));
    theirs.removeObjectForKey(key);
    ASSERT_TRUE(theirs.synchronize());
    mine.synchronize();
    EXPECT_EQ(mine.objectForKey(key), std::nullopt);
    theirs.setObject(3, QStringLiteral("other"));
    ASSERT_TRUE(theirs.synchronize());
    mine.setObject(4, key);
    EXPECT_EQ(bytes(mine), QByteArray("{\"key\":4,\"other\":3}"));
}

TEST_F(UserDefaultsTest, aHoldKeepsChangesFromTheDiskUntilItEnds)
{
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    {
        const UserDefaults::Hold hold(defaults);
        defaults.setObject(2, key);
        {
            const UserDefaults::Hold inner(defaults);
            defaults.setObject(3, QStringLiteral("other"));
        }
        EXPECT_EQ(defaults.objectForKey(key), QJsonValue(2));
        EXPECT_FALSE(defaults.synchronize());
        EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
    }
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":2,\"other\":3}"));
}

TEST_F(UserDefaultsTest, aHoldCanBeTakenBack)
{
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    {
        UserDefaults::Hold hold(defaults);
        defaults.setObject(2, key);
        defaults.setObject(3, QStringLiteral("other"));
        hold.takeBack();
        EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));
    }
    EXPECT_EQ(defaults.objectForKey(QStringLiteral("other")), std::nullopt);
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":1}"));
}

TEST_F(UserDefaultsTest, aHoldThatCannotBeWrittenLeavesAllAsItWas)
{
    const tests::LogCapture capture;
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting((m_path + QStringLiteral(".lock")).toStdString()));
    UserDefaults::Hold hold(defaults);
    defaults.setObject(2, key);
    EXPECT_FALSE(hold.writeNow());
    others.unlock();
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));
    EXPECT_EQ(bytes(defaults), QByteArray("{\"key\":1}"));

    UserDefaults::Hold another(defaults);
    defaults.setObject(2, key);
    EXPECT_TRUE(another.writeNow());
    EXPECT_EQ(bytes(), QByteArray("{\"key\":2}"));
}

TEST_F(UserDefaultsTest, whatCouldNotBeReadIsToldAndReadLater)
{
    const tests::LogCapture capture;
    writePlainly("{\"key\":1}");
    tests::makeOlder(m_path, std::chrono::hours(1));
    const UserDefaults defaults(m_path);
    {
        const tests::NoDescriptors none;
        EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
        EXPECT_EQ(defaults.failure(), tljira::SharedFile::reasonWhenUnread());
    }
    EXPECT_TRUE(tests::waitUntil([&] { return defaults.objectForKey(key) == QJsonValue(1); }));
    EXPECT_EQ(defaults.failure(), std::nullopt);
}

TEST_F(UserDefaultsTest, whatTheDiskRefusedTooLateIsTakenBackThereToo)
{
    const tests::LogCapture capture;
    const QString added = QStringLiteral("added");
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(defaults.synchronize());
    UserDefaults::Hold hold(defaults);
    defaults.setObject(2, key);
    defaults.setObject(3, added);
    // The folder's, when the new name is there already.
    const tests::FailingSync failing(2);
    EXPECT_FALSE(hold.writeNow());
    EXPECT_EQ(defaults.failure(), QStringLiteral("Input/output error"));
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));
    EXPECT_EQ(defaults.objectForKey(added), std::nullopt);
}

TEST_F(UserDefaultsTest, keepsSomeValuesInMemoryAlone)
{
    const auto secret = QStringLiteral("secret");
    UserDefaults before(m_path);
    before.setObject(QStringLiteral("on disk"), secret);
    EXPECT_EQ(bytes(before), R"({"secret":"on disk"})");

    UserDefaults defaults(m_path);
    defaults.keepInMemory({secret});
    EXPECT_EQ(defaults.objectForKey(secret), std::nullopt);
    defaults.setObject(QStringLiteral("in memory"), secret);
    EXPECT_EQ(defaults.stringForKey(secret), QStringLiteral("in memory"));
    EXPECT_EQ(bytes(defaults), R"({"secret":"on disk"})");
    defaults.setObject(1, key);
    EXPECT_EQ(bytes(defaults), R"({"key":1})");
    EXPECT_EQ(defaults.dictionaryRepresentation(), (QJsonObject{{key, 1}, {secret, QStringLiteral("in memory")}}));
    defaults.removeObjectForKey(secret);
    EXPECT_EQ(defaults.objectForKey(secret), std::nullopt);
    EXPECT_EQ(bytes(defaults), R"({"key":1})");
}

TEST_F(UserDefaultsTest, takesBackWhatIsInMemoryAlone)
{
    UserDefaults defaults(m_path);
    defaults.keepInMemory({key});
    defaults.setObject(1, key);
    {
        UserDefaults::Hold hold(defaults);
        defaults.setObject(2, key);
        EXPECT_EQ(defaults.objectForKey(key), QJsonValue(2));
        hold.takeBack();
    }
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));
}

} // namespace
