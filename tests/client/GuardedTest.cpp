#include "client/Guarded.h"
#include "client/CallIfSet.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

namespace {

using client::Guarded;

TEST(Guarded, startsWithAnEmptyValueOrTheGivenOne)
{
    EXPECT_EQ(Guarded<int>().get(), 0);
    EXPECT_EQ(Guarded<std::string>("a").get(), "a");
}

TEST(Guarded, letsTheOldValueGoWhereItMayUseTheNewOne)
{
    struct Item
    {
        Guarded<std::shared_ptr<Item>>* owner;
        bool* sawSuccessor;
        ~Item()
        {
            if (owner)
                *sawSuccessor = owner->get() != nullptr;
        }
    };
    bool sawSuccessor = false;
    Guarded<std::shared_ptr<Item>> guarded(nullptr);
    guarded.set(std::shared_ptr<Item>(new Item{&guarded, &sawSuccessor}));
    guarded.set(std::shared_ptr<Item>(new Item{nullptr, nullptr}));
    EXPECT_TRUE(sawSuccessor);
}

TEST(Guarded, isReadAndReplacedByThreadsAtTheSameTime)
{
    Guarded<std::string> guarded(std::string(100, 'a'));
    std::thread writer([&guarded] {
        for (int i = 0; i < 10000; ++i)
            guarded.set(std::string(100, static_cast<char>('a' + i % 26)));
    });
    int torn = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::string value = guarded.get();
        torn += value != std::string(100, value.front());
    }
    writer.join();
    EXPECT_EQ(torn, 0);
}

TEST(CallIfSet, callsAFunctionAndSkipsAnEmptyOne)
{
    int sum = 0;
    const std::function<void(int, int)> add = [&sum](int a, int b) { sum += a + b; };
    client::callIfSet(add, 3, 4);
    EXPECT_EQ(sum, 7);
    client::callIfSet(std::function<void(int, int)>(), 3, 4);
    EXPECT_EQ(sum, 7);
}

} // namespace
