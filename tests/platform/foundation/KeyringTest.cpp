#include "platform/foundation/settings/Keyring.h"

#include "tests/kit/DesktopKeyring.h"
#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using tests::DesktopKeyring;
using tests::waitUntil;
using tljira::Error;
using tljira::Keyring;

const QString application = QStringLiteral("tests");

class KeyringTest : public testing::Test
{
protected:
    void read()
    {
        Keyring::read([this](const std::optional<QString>& text, const auto& error) {
            answers.push_back("read " + (text ? text->toStdString() : codeOf(error)));
        });
    }
    void write(const char* text)
    {
        Keyring::write(QString::fromUtf8(text),
                       [this](const auto& error) { answers.push_back("write " + codeOf(error)); });
    }
    void remove()
    {
        Keyring::remove([this](const auto& error) { answers.push_back("remove " + codeOf(error)); });
    }
    bool waitForAnswers(std::size_t count) const
    {
        return waitUntil([&] { return answers.size() >= count; });
    }

    DesktopKeyring keyring;
    std::vector<std::string> answers;

private:
    static std::string codeOf(const std::optional<Error>& error) { return error ? std::to_string(error->code) : "ok"; }
};

TEST_F(KeyringTest, keepsOneTextAndAnswersInOrder)
{
    ASSERT_TRUE(keyring.start());
    read();
    write("wärp");
    read();
    write("weft");
    read();
    remove();
    read();
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(waitForAnswers(7));
    EXPECT_THAT(answers,
                ElementsAre("read -5", "write ok", "read wärp", "write ok", "read weft", "remove ok", "read -5"));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

TEST_F(KeyringTest, removesWhatIsNotThere)
{
    ASSERT_TRUE(keyring.start());
    remove();
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_THAT(answers, ElementsAre("remove ok"));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

TEST_F(KeyringTest, saysWhenItIsLocked)
{
    ASSERT_TRUE(keyring.start());
    write("warp");
    ASSERT_TRUE(waitForAnswers(1));
    ASSERT_TRUE(keyring.lock());
    read();
    write("weft");
    remove();
    ASSERT_TRUE(waitForAnswers(4));
    EXPECT_THAT(answers, ElementsAre("write ok", "read -5", "write -4", "remove -6"));
    EXPECT_TRUE(DesktopKeyring::hasTextOf(application));
}

TEST_F(KeyringTest, saysWhenThereIsNone)
{
    read();
    write("warp");
    remove();
    ASSERT_TRUE(waitForAnswers(3));
    EXPECT_THAT(answers, ElementsAre("read -3", "write -3", "remove -6"));
}

TEST_F(KeyringTest, findsTheOneThatWasStartedInAnothersPlace)
{
    ASSERT_TRUE(keyring.start());
    write("warp");
    ASSERT_TRUE(waitForAnswers(1));
    keyring.stop();
    ASSERT_TRUE(keyring.start());
    read();
    write("weft");
    ASSERT_TRUE(waitForAnswers(3));
    EXPECT_THAT(answers, ElementsAre("write ok", "read warp", "write ok"));
}

TEST_F(KeyringTest, saysThatAnotherEventLoopWouldNotHearIt)
{
    ASSERT_TRUE(keyring.start());
    // A thread that has none stands for a program with one of another kind.
    std::thread([this] {
        read();
        write("warp");
        remove();
    }).join();
    ASSERT_TRUE(waitForAnswers(3));
    EXPECT_THAT(answers, ElementsAre("read -2", "write -2", "remove -2"));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

} // namespace
