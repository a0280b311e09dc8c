#include "platform/foundation/files/FileManager.h"
#include "tests/client/ClientTest.h"

#include <QDir>

#include <random>

namespace {

using standin::Fault;
using standin::Match;

/// Answers in which bytes are changed, repeated, removed or swapped at random. As many as TLJIRA_MUTATIONS says; their
/// numbers tell them apart, and the same number is always the same answer.
class MutatedAnswersTest : public tests::ClientTest
{
protected:
    void SetUp() override
    {
        logIn();
        QDir().mkpath(path("temporary"));
        qputenv("TMPDIR", path("temporary").toUtf8());
    }

    static int count()
    {
        const int asked = qEnvironmentVariableIntValue("TLJIRA_MUTATIONS");
        return asked > 0 ? asked : 250;
    }

    static std::string mutated(std::string answer, int number)
    {
        std::mt19937 random(static_cast<unsigned>(number));
        const auto place = [&](std::size_t end) { return random() % end; };
        for (unsigned change = 0; change <= random() % 4; ++change) {
            const std::size_t at = place(answer.size());
            const std::size_t length = 1 + place(std::min<std::size_t>(answer.size() - at, 12));
            switch (random() % 5) {
            case 0:
                answer[at] = static_cast<char>(random());
                break;
            case 1:
                answer.insert(at, answer.substr(at, length));
                break;
            case 2:
                answer.erase(at, length);
                break;
            case 3:
                std::swap(answer[at], answer[place(answer.size())]);
                break;
            case 4:
                answer.resize(at + 1);
                break;
            }
        }
        return answer;
    }

    static std::string answerWith(const std::string& fields, const std::string& body)
    {
        return "HTTP/1.1 200 OK\r\n" + fields + "Content-Length: " + std::to_string(body.size()) +
               "\r\nSet-Cookie: JSESSIONID=1; Path=/\r\n\r\n" + body;
    }

    void serve(const std::string& answer)
    {
        server.behave();
        server.misbehave(Match::next(), Fault().raw(answer));
        events.clear();
    }
};

TEST_F(MutatedAnswersTest, endALookUpOnce)
{
    const std::string whole = R"({"key": "ABC-1", "fields": {"attachment": [{"id": "1", "filename": "plan.tessaloom",)"
                              R"( "size": 3, "created": "2021-03-04T05:06:07.089+0100", "content": "http://x/1"}]}})";
    for (int number = 0; number < count(); ++number) {
        SCOPED_TRACE(number);
        serve(mutated(answerWith("Content-Type: application/json\r\n", whole), number));
        client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
        ASSERT_TRUE(waitForEvents(1));
        ASSERT_EQ(events.size(), 1u);
        EXPECT_NE(issue == nullptr, !error.has_value());
    }
}

TEST_F(MutatedAnswersTest, endADownloadOnceWithTheOldFileOrWhatTheServerSent)
{
    const std::string whole = "0123456789abcdefghijklmnopqrstuvwxyz";
    for (int number = 0; number < count(); ++number) {
        SCOPED_TRACE(number);
        const std::string answer = mutated(answerWith("Content-Type: application/octet-stream\r\n", whole), number);
        serve(answer);
        writeFile("saved", "old bytes");
        client->downloadFile(QStringLiteral("http://jira.example.test/secure/attachment/1/x"), downloadCallBack(),
                             path("saved"));
        ASSERT_TRUE(waitForEvents(1));
        ASSERT_EQ(events.size(), 1u);
        const std::string saved = tests::contentsOf(path("saved")).value_or("nothing").toStdString();
        if (error)
            EXPECT_EQ(saved, "old bytes");
        else
            EXPECT_NE(answer.find(saved), std::string::npos) << saved;
        EXPECT_EQ(tljira::FileManager::filesBelowPath(path("temporary")), QStringList());
    }
}

} // namespace
