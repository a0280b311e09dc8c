#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/JSON.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printers.h"
#include "tests/support/WaitUntil.h"

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
    QByteArray bytes() const
    {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
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

TEST_F(UserDefaultsTest, BeginEmptyAndWriteNothingByThemselves)
{
    const UserDefaults defaults(m_path);
    EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
    EXPECT_EQ(defaults.stringForKey(key), std::nullopt);
    EXPECT_FALSE(defaults.boolForKey(key));
    EXPECT_FALSE(QFileInfo::exists(m_path));
}

TEST_F(UserDefaultsTest, AValueIsVisibleAtOnceAndSurvives)
{
    UserDefaults defaults(m_path);
    const UserDefaults other(m_path);
    defaults.setObject(QStringLiteral("v\u20ac"), key);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("v\u20ac"));
    EXPECT_EQ(other.stringForKey(key), QStringLiteral("v\u20ac"));
    EXPECT_EQ(bytes(), QByteArray("{\"key\":\"v\xe2\x82\xac\"}"));
    EXPECT_EQ(UserDefaults(m_path).stringForKey(key), QStringLiteral("v\u20ac"));
}

TEST_F(UserDefaultsTest, SettingNothingRemovesTheKey)
{
    UserDefaults defaults(m_path);
    defaults.setObject(1, QStringLiteral("stays"));
    for (const std::optional<QJsonValue>& nothing :
         {std::optional<QJsonValue>(), std::optional(QJsonValue()), std::optional(QJsonValue(QJsonValue::Undefined))}) {
        defaults.setObject(1, key);
        defaults.setObject(nothing, key);
        EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
        EXPECT_EQ(bytes(), QByteArray("{\"stays\":1}"));
    }
    defaults.removeObjectForKey(QStringLiteral("stays"));
    EXPECT_EQ(bytes(), QByteArray("{}"));
}

TEST_F(UserDefaultsTest, ValuesOfEveryKind)
{
    UserDefaults defaults(m_path);
    const QJsonObject object{{QStringLiteral("a"), QJsonArray{1, QStringLiteral("x")}}};
    defaults.setObject(object, key);
    EXPECT_EQ(UserDefaults(m_path).objectForKey(key), QJsonValue(object));
    EXPECT_EQ(defaults.stringForKey(key), std::nullopt);
    defaults.setObject(Q_INT64_C(9223372036854775807), key);
    EXPECT_EQ(UserDefaults(m_path).objectForKey(key).value_or(QJsonValue()).toInteger(),
              Q_INT64_C(9223372036854775807));
}

TEST_F(UserDefaultsTest, NumbersReadAsTexts)
{
    UserDefaults defaults(m_path);
    defaults.setObject(42, key);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("42"));
    defaults.setObject(0.5, key);
    EXPECT_EQ(defaults.stringForKey(key), QStringLiteral("0.5"));
    defaults.setObject(true, key);
    EXPECT_EQ(defaults.stringForKey(key), std::nullopt);
}

TEST_F(UserDefaultsTest, Booleans)
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

TEST_F(UserDefaultsTest, ArePrivate)
{
    umask(0);
    UserDefaults(m_path).setObject(1, key);
    EXPECT_EQ(modeOf(m_path), 0600u);
    EXPECT_EQ(modeOf(QFileInfo(m_path).path()), 0700u);
}

TEST_F(UserDefaultsTest, TheStandardOnesLieInTheConfigurationFolder)
{
    UserDefaults::standardUserDefaults().setObject(1, key);
    const QString path = QString::fromUtf8(qgetenv("XDG_CONFIG_HOME")) + QStringLiteral("/tests/userdefaults.json");
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_EQ(UserDefaults(path).objectForKey(key), QJsonValue(1));
    EXPECT_EQ(&UserDefaults::standardUserDefaults(), &UserDefaults::standardUserDefaults());
}

TEST_F(UserDefaultsTest, TwoProcessesLoseNothing)
{
    constexpr int count = 100;
    const QStringList prefixes{QStringLiteral("a"), QStringLiteral("b")};
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QString& prefix : prefixes) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(QStringLiteral(DEFAULTS_WRITER), {m_path, prefix, QString::number(count)});
    }
    // A reader on the side sees whole files only.
    const UserDefaults reader(m_path);
    ASSERT_TRUE(tests::waitUntil([&] {
        reader.objectForKey(key);
        return std::all_of(processes.begin(), processes.end(),
                           [](const auto& process) { return process->state() == QProcess::NotRunning; });
    }));
    for (const auto& process : processes) {
        EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process->exitCode(), 0);
        // A very slow disk may make one wait for the other too long; what it has to write is written later.
        for (const QByteArray& line : process->readAllStandardError().split('\n'))
            EXPECT_TRUE(line.isEmpty() || line.endsWith("it cannot be locked")) << line.toStdString();
    }
    const UserDefaults afterwards(m_path);
    for (const QString& prefix : prefixes) {
        for (int number = 0; number < count; ++number)
            EXPECT_EQ(afterwards.objectForKey(prefix + QString::number(number)), QJsonValue(number));
    }
    EXPECT_THAT(QDir(QFileInfo(m_path).path()).entryList(QDir::Files | QDir::Hidden),
                ElementsAre(QStringLiteral("userdefaults.json")));
}

TEST_F(UserDefaultsTest, ThreadsLoseNothing)
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
    EXPECT_EQ(tljira::decodeJSON(bytes()).value_or(QJsonValue()).toObject().size(), 80);
}

TEST_F(UserDefaultsTest, ADamagedFileIsKeptAsideAndTheStoreStartsEmpty)
{
    const tests::LogCapture capture;
    const QString aside = m_path + QStringLiteral(".damaged-1");
    for (const QByteArray& damage : {QByteArray("{\"key\":1"), QByteArray(), QByteArray("[1]"), QByteArray("\xff")}) {
        capture.lines();
        writePlainly(damage);
        UserDefaults defaults(m_path);
        EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
        QFile kept(aside);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), damage);
        defaults.setObject(2, key);
        EXPECT_EQ(UserDefaults(m_path).objectForKey(key), QJsonValue(2));
        EXPECT_EQ(capture.lines().last(), m_path + QStringLiteral(" is damaged and was set aside as ") + aside);
        ASSERT_TRUE(kept.remove());
    }
    EXPECT_EQ(capture.lines().size(), 4);
}

TEST_F(UserDefaultsTest, WritingOverADamagedFileKeepsItAsideToo)
{
    const tests::LogCapture capture;
    writePlainly("garbage");
    UserDefaults defaults(m_path);
    defaults.setObject(2, key);
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(2));
    EXPECT_EQ(bytes(), QByteArray("{\"key\":2}"));
    EXPECT_TRUE(QFileInfo::exists(m_path + QStringLiteral(".damaged-1")));
    EXPECT_EQ(capture.lines().size(), 1);
}

TEST_F(UserDefaultsTest, WhatTheDiskRefusesStaysInMemoryAndIsTriedAgain)
{
    const tests::LogCapture capture;
    QFile obstacle(QFileInfo(m_path).path());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    EXPECT_EQ(capture.lines().size(), 1);
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));
    defaults.synchronize();
    EXPECT_EQ(capture.lines().size(), 2);
    EXPECT_EQ(defaults.objectForKey(key), QJsonValue(1));

    ASSERT_TRUE(obstacle.remove());
    defaults.setObject(2, QStringLiteral("other"));
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1,\"other\":2}"));
    EXPECT_EQ(capture.lines().size(), 2);
}

TEST_F(UserDefaultsTest, SynchronizeWritesWhatWasRefused)
{
    const tests::LogCapture capture;
    QFile obstacle(QFileInfo(m_path).path());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(obstacle.remove());
    EXPECT_FALSE(QFileInfo::exists(m_path));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
}

TEST_F(UserDefaultsTest, AnUnsavedRemovalDoesNotBringTheOldValueBack)
{
    const tests::LogCapture capture;
    UserDefaults defaults(m_path);
    defaults.setObject(1, key);
    ASSERT_TRUE(QDir().mkdir(m_path + QStringLiteral(".lock")));
    defaults.removeObjectForKey(key);
    EXPECT_EQ(defaults.objectForKey(key), std::nullopt);
    EXPECT_EQ(bytes(), QByteArray("{\"key\":1}"));
    EXPECT_FALSE(defaults.synchronize());
    ASSERT_TRUE(QDir().rmdir(m_path + QStringLiteral(".lock")));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(bytes(), QByteArray("{}"));
}

TEST_F(UserDefaultsTest, TakesUpWhatAnotherWrote)
{
    UserDefaults mine(m_path);
    UserDefaults theirs(m_path);
    mine.setObject(1, key);
    theirs.setObject(2, key);
    EXPECT_TRUE(tests::waitUntil([&] { return mine.objectForKey(key) == QJsonValue(2); }));
    theirs.removeObjectForKey(key);
    mine.synchronize();
    EXPECT_EQ(mine.objectForKey(key), std::nullopt);
    theirs.setObject(3, QStringLiteral("other"));
    mine.setObject(4, key);
    EXPECT_EQ(bytes(), QByteArray("{\"key\":4,\"other\":3}"));
}

} // namespace
