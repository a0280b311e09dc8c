#include "platform/foundation/settings/KeyringLoader.h"

#include "platform/foundation/settings/Keyring.h"
#include "tests/kit/Files.h"
#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tljira::Keyring;
using tljira::KeyringLoader;

const QString fileName = QStringLiteral("libTLJiraControllerKeyring.so");

/// A program that brings its libraries along, in a folder of its own where Qt looks for plug-ins.
class KeyringLoaderTest : public testing::Test
{
protected:
    KeyringLoaderTest()
    {
        EXPECT_TRUE(QDir(m_plugins.path()).mkdir(QStringLiteral("tljiracontroller")));
        QCoreApplication::addLibraryPath(m_plugins.path());
    }

    QString place() const { return m_plugins.path() + QStringLiteral("/tljiracontroller/") + fileName; }
    std::string failure()
    {
        EXPECT_EQ(loader.service(), nullptr);
        return loader.failure().toStdString();
    }

    KeyringLoader loader;

private:
    QTemporaryDir m_plugins;
};

TEST_F(KeyringLoaderTest, takesTheFileWhereQtLooksForPlugIns)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(KEYRING_PLUGIN), place()));
    auto* const service = loader.service();
    EXPECT_NE(service, nullptr) << loader.failure().toStdString();
    EXPECT_EQ(loader.service(), service);
}

TEST_F(KeyringLoaderTest, saysWhereItHasLookedForAFileThatIsMissing)
{
    EXPECT_THAT(failure(),
                HasSubstr("TLJiraControllerKeyring was looked for in " +
                          QCoreApplication::applicationDirPath().toStdString() + "/qt6/plugins/tljiracontroller, "));
    EXPECT_THAT(failure(), HasSubstr(QFileInfo(place()).path().toStdString()));
}

TEST_F(KeyringLoaderTest, findsAFileThatWasInstalledMeanwhile)
{
    EXPECT_EQ(loader.service(), nullptr);
    ASSERT_TRUE(QFile::copy(QStringLiteral(KEYRING_PLUGIN), place()));
    EXPECT_NE(loader.service(), nullptr) << loader.failure().toStdString();
}

TEST_F(KeyringLoaderTest, takesNoPlugInOfAnotherKind)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(OTHER_PLUGIN), place()));
    EXPECT_EQ(failure(), place().toStdString() + " belongs to another version");
}

TEST_F(KeyringLoaderTest, saysWhatIsWrongWithADamagedFile)
{
    tests::writeFile(place(), "no library");
    EXPECT_THAT(failure(), HasSubstr(place().toStdString()));
    EXPECT_THAT(failure(), Not(HasSubstr("was looked for")));
}

TEST_F(KeyringLoaderTest, looksFurtherBehindADamagedFile)
{
    tests::writeFile(place(), "no library");
    const QTemporaryDir other;
    ASSERT_TRUE(QDir(other.path()).mkdir(QStringLiteral("tljiracontroller")));
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(KEYRING_PLUGIN), other.path() + QStringLiteral("/tljiracontroller/") + fileName));
    QCoreApplication::setLibraryPaths(QCoreApplication::libraryPaths() << other.path());
    EXPECT_NE(loader.service(), nullptr) << loader.failure().toStdString();
}

TEST(KeyringWithoutItsFile, saysSoLater)
{
    std::vector<std::optional<tljira::Error>> errors;
    Keyring::read([&](const std::optional<QString>& text, const auto& error) {
        EXPECT_EQ(text, std::nullopt);
        errors.push_back(error);
    });
    Keyring::write(QStringLiteral("text"), [&](const auto& error) { errors.push_back(error); });
    Keyring::remove([&](const auto& error) { errors.push_back(error); });
    EXPECT_THAT(errors, IsEmpty());
    ASSERT_TRUE(tests::waitUntil([&] { return errors.size() == 3; }));
    for (const auto& error : errors) {
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->code, static_cast<qint64>(Keyring::Problem::NotLoaded));
        EXPECT_EQ(Keyring::sentenceOf(*error),
                  QStringLiteral("The part of this program that reaches the desktop’s keyring is missing or cannot be "
                                 "loaded."));
        EXPECT_THAT(Keyring::detailOf(*error).toStdString(), HasSubstr("was looked for in "));
    }
}

} // namespace
