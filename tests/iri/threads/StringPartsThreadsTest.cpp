// Readers, comparisons and copies of one value on many threads: its forms and their hashes come into
// being when somebody asks for them first. Meant to run under ThreadSanitizer as well.

#include "iri/StringPartsTesting.hpp"
#include "threads/Barrier.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace foundation::network::iri::test {
namespace {

    constexpr std::size_t threadCount = 8;
    constexpr std::size_t roundCount = 200;

    // One text in the form in which it is stored.
    std::u32string textIn(Encoding encoding, const Component& component)
    {
        const bool isAuthority = component.getter == &Parts::getUserInfo
                                 || component.getter == &Parts::getHost; // has no space
        const std::u32string front = isAuthority                     ? U"p"
                                     : encoding == Encoding::Decoded ? U"/p "
                                                                     : U"/p%20";
        return front + (encoding == Encoding::Ascii ? U"%C3%A9%E4%BE%8B" : U"\u00E9\u4F8B");
    }

    Parts partsIn(Encoding encoding)
    {
        Parts parts;
        for (const Component& component : components)
            component.set(parts, textIn(encoding, component), encoding);
        return parts;
    }

    // What all threads share in one round: nobody has read these.
    struct Shared {
        Parts left; // the form of it that is asked for, the right side has to make
        Parts right;
        Parts other; // differs in the last component only
    };

    Shared shared(Encoding left, Encoding right)
    {
        Shared result{partsIn(left), partsIn(right), partsIn(right)};
        result.other.setFragment(U"another", right);
        return result;
    }

    using Look = bool (*)(const Shared&);

    // Each holds whatever others do. The threads begin with different ones.
    const Look looks[] = {
        [](const Shared& all) { return all.left == all.right; },
        [](const Shared& all) { return !(all.left != all.right); },
        [](const Shared& all) { return all.right == all.left; },
        [](const Shared& all) { return !(all.left == all.other); },
        [](const Shared& all) { return all.other != all.left; },
        [](const Shared& all) { return std::equal_to<>()(all.left, all.left); },
        [](const Shared& all) { return Parts(all.left) == all.right; },
        [](const Shared& all) { return all.right == Parts(all.left); },
        [](const Shared& all) {
            return all.right.getHost(Encoding::Ascii) == all.left.getHost(Encoding::Ascii);
        },
    };

    void look(const Shared& all, std::size_t first, std::atomic<int>& wrong)
    {
        for (std::size_t i = 0; i < std::size(looks); ++i)
            wrong += looks[(first + i) % std::size(looks)](all) ? 0 : 1;
    }

    TEST(StringPartsThreads, findEqualWhatIsEqual)
    {
        for (const Encoding left : {Encoding::Decoded, Encoding::Iri, Encoding::Ascii})
            for (const Encoding right : {Encoding::Decoded, Encoding::Iri, Encoding::Ascii}) {
                std::vector<Shared> rounds;
                for (std::size_t i = 0; i < roundCount; ++i)
                    rounds.push_back(shared(left, right));
                std::atomic<int> wrong = 0;
                tests::Barrier meeting(threadCount);
                std::vector<std::thread> threads;
                for (std::size_t thread = 0; thread < threadCount; ++thread)
                    threads.emplace_back([&, thread] {
                        for (std::size_t round = 0; round < roundCount; ++round) {
                            meeting.arriveAndWait();
                            look(rounds[round], thread + round, wrong);
                        }
                    });
                for (std::thread& thread : threads)
                    thread.join();
                EXPECT_EQ(wrong, 0)
                    << static_cast<unsigned>(left) << " and " << static_cast<unsigned>(right);
            }
    }

} // namespace
} // namespace foundation::network::iri::test
