#include "platform/foundation/settings/BackgroundWriter.h"
#include "tests/kit/HeldSystem.h"
#include "tests/platform/foundation/ScarceSystem.h"
#include "tests/platform/foundation/SessionTest.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using standin::Fault;
using standin::Match;
using testing::ElementsAre;
using tests::Resource;
using tests::Scarcity;

/// A machine that has nothing left for a request makes that request end with an error.
class URLSessionScarcityTest : public tests::SessionTest
{
protected:
    URLSessionScarcityTest() { server.misbehave(Match(), Fault().status(200, "body")); }

    void expectRefusal(const tljira::URLRequest& request)
    {
        events.clear();
        run(request);
        EXPECT_THAT(events, ElementsAre("no response", "end -1008"));
        ASSERT_TRUE(error);
        EXPECT_EQ(error->domain, QStringLiteral("NSURLErrorDomain"));
        EXPECT_EQ(error->localizedDescription(),
                  QStringLiteral("The request could not be started: the system has no thread or memory left for it."));
    }

    void expectAnswer(const tljira::URLRequest& request)
    {
        events.clear();
        run(request);
        EXPECT_THAT(events, ElementsAre("200", "end"));
    }

    tljira::URLRequest requestWithFile() const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write("bytes"), 5);
        file.close();
        tljira::URLRequest request = requestFor("upload");
        request.HTTPMethod = QStringLiteral("POST");
        request.HTTPBody = tljira::Data::contentsOfFile(path);
        return request;
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
};

class OneScarceResource : public URLSessionScarcityTest, public testing::WithParamInterface<Resource>
{
};

TEST_P(OneScarceResource, endsTheRequestAndLetsTheNextOneTryAgain)
{
    {
        const Scarcity scarcity(GetParam());
        expectRefusal(requestFor("x"));
        session->downloadTaskWithRequest(requestFor("x"))->resume();
        ASSERT_TRUE(tests::waitUntil([this] { return ends == 2; }));
        EXPECT_EQ(events.back(), "end -1008");
    }
    EXPECT_EQ(server.connectionCount(), 0u);
    expectAnswer(requestFor("x"));
}

INSTANTIATE_TEST_SUITE_P(AtTheFirstRequest, OneScarceResource,
                         testing::Values(Resource::Threads, Resource::EasyHandles, Resource::MultiHandles,
                                         Resource::Addresses));

TEST_F(URLSessionScarcityTest, aThreadThatNobodyCanWakeTakesRequestsAndCancelsThem)
{
    const Scarcity scarcity(Resource::WakeUps);
    expectAnswer(requestFor("x"));
    expectAnswer(requestFor("x"));
    server.behave();
    server.misbehave(Match(), Fault().hold(standin::Point::responseHead(0)));
    events.clear();
    // Cancelled long before its time-out.
    const auto task = dataTask(requestFor("x", 3600));
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    task->cancel();
    ASSERT_TRUE(tests::waitUntil([this] { return !events.empty(); }));
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("no response", "end -999"));
}

TEST_F(URLSessionScarcityTest, aThreadThatIsNotToldWhatMovesLooksItself)
{
    const Scarcity scarcity(Resource::Polls);
    expectAnswer(requestFor("x"));
}

TEST_F(URLSessionScarcityTest, endsAnUploadWhoseFileNobodyCanRead)
{
    expectAnswer(requestFor("x"));
    const tljira::URLRequest upload = requestWithFile();
    const tests::ColdFile cold(path, 0);
    {
        const Scarcity scarcity(Resource::Threads);
        expectRefusal(upload);
        expectAnswer(requestFor("x"));
    }
    expectAnswer(upload);
    EXPECT_EQ(server.lastRequest().body, "bytes");
}

TEST_F(URLSessionScarcityTest, anUploadNeedsNoThreadForAFileThatLiesInMemory)
{
    expectAnswer(requestFor("x"));
    const Scarcity scarcity(Resource::Threads);
    expectAnswer(requestWithFile());
    EXPECT_EQ(server.lastRequest().body, "bytes");
}

/// Refuses before there is a session, and so a cookie jar.
struct EarlyScarcity
{
    explicit EarlyScarcity(Resource resource)
        : scarcity(std::in_place, resource)
    {
    }
    std::optional<Scarcity> scarcity;
};

class WithoutCurl : public EarlyScarcity, public URLSessionScarcityTest
{
protected:
    WithoutCurl()
        : EarlyScarcity(Resource::Curl)
    {
    }
};

TEST_F(WithoutCurl, endsTheRequestAndLetsTheNextOneTryAgain)
{
    expectRefusal(requestFor("x"));
    scarcity.reset();
    expectAnswer(requestFor("x"));
}

class WithoutCookieEngine : public EarlyScarcity,
                            public URLSessionScarcityTest,
                            public testing::WithParamInterface<Resource>
{
protected:
    WithoutCookieEngine()
        : EarlyScarcity(GetParam())
    {
    }
};

TEST_P(WithoutCookieEngine, endsRequestsThatNeedTheJar)
{
    scarcity.reset();
    const auto& jar = session->configuration().HTTPCookieStorage;
    jar->setCookie(tljira::HTTPCookie{});
    jar->deleteAllCookies();
    EXPECT_TRUE(jar->cookies().empty());
    expectRefusal(requestFor("x"));
    tljira::URLRequest request = requestFor("x");
    request.HTTPShouldHandleCookies = false;
    expectAnswer(request);
}

INSTANTIATE_TEST_SUITE_P(AtTheStart, WithoutCookieEngine,
                         testing::Values(Resource::EasyHandles, Resource::ShareHandles));

/// Without a thread of its own the work is done in the calls that ask for it, one at a time.
TEST(BackgroundWriterWithoutAThread, saysSoWhenAnotherCallKeepsTheWork)
{
    std::counting_semaphore<100> mayBegin{0};
    std::counting_semaphore<100> mayEnd{0};
    std::atomic<int> begun = 0;
    tljira::BackgroundWriter writer({[&](bool) {
                                         ++begun;
                                         mayEnd.acquire();
                                     },
                                     [] { return false; }, [] {}});
    std::atomic<bool> isFinished = false;
    std::thread other([&] {
        mayBegin.acquire();
        isFinished = writer.finish();
    });
    {
        const Scarcity scarcity(Resource::Threads);
        mayBegin.release();
        EXPECT_TRUE(tests::waitUntil([&] { return begun == 1; }));
        EXPECT_FALSE(writer.finish());
        mayEnd.release(10);
        other.join();
    }
    EXPECT_TRUE(isFinished);
    EXPECT_EQ(begun, 1);
}

} // namespace
