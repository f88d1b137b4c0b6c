// Copies of a value that another thread reads. What a copy has is what the value had at one moment:
// whatever was made later is not there without what was made before it. Only the answers to later
// readings tell, where they depend on what was read before.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <deque>
#include <string>
#include <thread>

namespace foundation::network {
namespace {

    using Encoding = IRI::Encoding;

    // How often a reader is met. A copy that mixes two moments shows within the first few times.
    int meetings()
    {
        const char* const factor =
            std::getenv("ZKFLNETWORK_TEST_FACTOR"); // NOLINT(concurrency-mt-unsafe)
        return static_cast<int>(40 * (factor ? std::stod(factor) : 1.0));
    }

    std::string repeated(const std::string& text)
    {
        std::string result;
        for (int i = 0; i < 5000; ++i)
            result += text;
        return result;
    }

    // Copies that were made while another thread has read, the last ones before the end and one after.
    template <class Read>
    std::deque<IRI> copiesWhile(const IRI& iri, Read read)
    {
        std::atomic<bool> isDone{false};
        std::thread reader([&] {
            read(iri);
            isDone = true;
        });
        std::deque<IRI> copies;
        bool isLast = false;
        do {
            isLast = isDone;
            copies.emplace_back(iri);
            if (copies.size() > 4)
                copies.pop_front();
        } while (!isLast);
        reader.join();
        return copies;
    }

    // A strict text that is there tells that the plain one shows a repaired authority.
    TEST(CopyWhileRead, hasThePlainTextThatCameWithTheStrictOne)
    {
        const std::string text = "//%ＡＢ@%ＡＢ/" + repeated("ä%ＡＢ");
        const IRI single(text);
        const std::string unrepaired = single.toAsciiStringUtf8();
        const IRI strictFirst(text);
        strictFirst.toAsciiString(true);
        const std::string repaired = strictFirst.toAsciiStringUtf8();
        ASSERT_NE(unrepaired, repaired);
        for (int i = 0; i < meetings(); ++i) {
            const IRI iri(text);
            iri.toString(true); // takes a while to copy
            for (const IRI& copy :
                 copiesWhile(iri, [](const IRI& shared) { shared.toAsciiString(true); })) {
                copy.toAsciiString(true);
                ASSERT_TRUE(copy.toAsciiStringUtf8() == repaired) << "meeting " << i;
            }
        }
    }

    // A query that was put together from pairs reads otherwise once its ASCII form was made.
    TEST(CopyWhileRead, hasTheComponentsThatATextWasMadeOf)
    {
        const IRIArgs args =
            IRIArgs().appendQueryKeyValuePair("ü&", "", false, false).setFragment(repeated("ä "));
        const IRI unread(args);
        const IRI read(args);
        read.toAsciiString();
        const std::string expected = read.getQueryUtf8();
        ASSERT_NE(unread.getQueryUtf8(), expected);
        for (int i = 0; i < meetings(); ++i) {
            const IRI iri(args);
            iri.getFragment(Encoding::Ascii); // takes a while to copy
            ASSERT_FALSE(iri < unread);       // and what this compares, too
            for (const IRI& copy :
                 copiesWhile(iri, [](const IRI& shared) { shared.toAsciiString(); })) {
                copy.toAsciiString();
                ASSERT_EQ(copy.getQueryUtf8(), expected) << "meeting " << i;
            }
        }
    }

} // namespace
} // namespace foundation::network
