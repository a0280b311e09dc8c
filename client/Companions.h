#pragma once

#include <algorithm>
#include <memory>
#include <vector>

namespace client {

/// Who goes along with what, one with each. Nobody is kept alive by it. Main thread only.
template <class Subject, class Companion>
class Companions
{
public:
    /// Takes the place of whoever went along before.
    static void join(const Subject& subject, const std::weak_ptr<Companion>& companion)
    {
        std::erase_if(all(), [&](const Pair& pair) { return pair.companion.expired() || pair.subject == &subject; });
        all().push_back({&subject, companion});
    }

    /// Null for none.
    static std::shared_ptr<Companion> of(const Subject& subject)
    {
        const auto found =
            std::find_if(all().begin(), all().end(), [&](const Pair& pair) { return pair.subject == &subject; });
        return found == all().end() ? nullptr : found->companion.lock();
    }

private:
    struct Pair
    {
        const Subject* subject = nullptr;
        std::weak_ptr<Companion> companion;
    };

    static std::vector<Pair>& all()
    {
        static std::vector<Pair> pairs;
        return pairs;
    }
};

} // namespace client
