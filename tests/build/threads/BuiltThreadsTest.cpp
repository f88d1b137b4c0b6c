// Meant to run under ThreadSanitizer, which sees a race even when its outcome is right.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "threads/Barrier.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace foundation::network {

namespace {

    constexpr std::size_t threadCount = 6;
    constexpr int rounds = 150;

    using Values = std::vector<IRI>;

    // The threads share these; each round has new ones, for which nothing was made yet.
    Values builtValues()
    {
        Values result;
        for (const char* name : {"b", "ä", "a b", "a!", "%41", "z", ""})
            result.emplace_back(IRIArgs()
                                    .setScheme("x")
                                    .setUserInfo(name)
                                    .setHost(name)
                                    .setPort(8)
                                    .setPath(std::string("/") + name)
                                    .setQuery(name)
                                    .setFragment(name));
        for (const char* key : {"a b", "é", "&"})
            result.emplace_back(IRIArgs().appendQueryKeyValuePair(key, "", key[0] == '&', false));
        // Components that are stored as they were written.
        const IRI base(std::string("http://u%20@h%41/%7e/x?q#f"));
        for (const char* reference : {"?%41", "../é#%20", "//%41"})
            result.push_back(IRI(std::string(reference)).resolveAgainst(base));
        return result;
    }

    Values parsedValues()
    {
        Values result;
        for (const IRI& iri : builtValues())
            result.emplace_back(iri.toStringUtf8());
        return result;
    }

    std::vector<std::string> textsOf(const Values& values)
    {
        std::vector<std::string> result;
        for (const IRI& iri : values)
            result.push_back(iri.toStringUtf8());
        return result;
    }

    std::vector<std::string> sortedTextsOf(Values values)
    {
        std::sort(values.begin(), values.end());
        return textsOf(values);
    }

    // Runs `body(built, parsed, thread)` on all threads at once, with fresh values for each round.
    template <class Body>
    void forEachRound(Body body)
    {
        Values built, parsed;
        tests::Barrier start(threadCount);
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&, thread] {
                for (int round = 0; round < rounds; ++round) {
                    if (thread == 0) {
                        built = builtValues();
                        parsed = parsedValues();
                    }
                    start.arriveAndWait();
                    body(static_cast<const Values&>(built), static_cast<const Values&>(parsed),
                         thread);
                    start.arriveAndWait();
                }
            });
        for (std::thread& thread : threads)
            thread.join();
    }

} // namespace

TEST(BuiltThreads, copiesOfSharedValuesAreSorted)
{
    const std::vector<std::string> sortedBuilt = sortedTextsOf(builtValues());
    const std::vector<std::string> sortedParsed = sortedTextsOf(parsedValues());
    std::atomic<int> wrong = 0;
    forEachRound([&](const Values& built, const Values& parsed, std::size_t thread) {
        const bool builtFirst = thread % 2 == 0;
        if (sortedTextsOf(builtFirst ? built : parsed) != (builtFirst ? sortedBuilt : sortedParsed))
            ++wrong;
        if (sortedTextsOf(builtFirst ? parsed : built) != (builtFirst ? sortedParsed : sortedBuilt))
            ++wrong;
    });
    EXPECT_EQ(wrong, 0);
}

// Without copies: the threads meet in the values themselves.
TEST(BuiltThreads, sharedValuesAreOrdered)
{
    const auto order = [](const Values& values) {
        std::vector<const IRI*> pointers;
        for (const IRI& iri : values)
            pointers.push_back(&iri);
        std::sort(pointers.begin(), pointers.end(),
                  [](const IRI* left, const IRI* right) { return *left < *right; });
        std::vector<std::string> texts;
        for (const IRI* iri : pointers)
            texts.push_back(iri->toStringUtf8());
        return texts;
    };
    const std::vector<std::string> right = sortedTextsOf(builtValues());
    std::atomic<int> wrong = 0;
    forEachRound([&](const Values& built, const Values&, std::size_t) {
        if (order(built) != right)
            ++wrong;
    });
    EXPECT_EQ(wrong, 0);
}

TEST(BuiltThreads, sharedValuesAreHashed)
{
    std::vector<std::uint64_t> hashes;
    for (const IRI& iri : builtValues())
        hashes.push_back(iri.hashValue());
    std::atomic<int> wrong = 0;
    forEachRound([&](const Values& built, const Values& parsed, std::size_t thread) {
        for (std::size_t i = 0; i < built.size(); ++i) {
            const std::size_t at = (i + thread) % built.size();
            if (built[at].hashValue() != hashes[at] || parsed[at].hashValue() != hashes[at])
                ++wrong;
            const IRI copy(built[at]);
            if (std::hash<IRI>()(copy) != hashes[at])
                ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
}

// Nobody waits for ever for a hash that cannot be computed.
TEST(BuiltThreads, aHashThatFailsFailsForEveryone)
{
    IRIArgs args;
    using Base = iri::detail::ArgsBase<std::u32string>;
    static_cast<Base&>(args).setQuery(std::u32string{0x11FFFE}); // which cannot be escaped
    std::atomic<int> failures = 0;
    const IRI shared(args);
    tests::Barrier start(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&] {
            start.arriveAndWait();
            for (int round = 0; round < rounds; ++round)
                try {
                    shared.hashValue();
                } catch (const std::out_of_range&) {
                    ++failures;
                }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, static_cast<int>(threadCount) * rounds);
}

TEST(BuiltThreads, sharedValuesAreComparedWithEachOther)
{
    // What a single thread finds.
    const auto relationsOf = [](const Values& built, const Values& parsed) {
        std::string result;
        for (const IRI& left : built)
            for (const IRI& right : built) {
                result += left == right ? '=' : '-';
                result += left != right ? '!' : '-';
            }
        for (const IRI& left : built)
            for (const IRI& right : parsed) {
                result += left == right ? '=' : '-';
                result += left < right ? '<' : '-';
                result += right < left ? '>' : '-';
            }
        return result;
    };
    const std::string right = relationsOf(builtValues(), parsedValues());
    std::atomic<int> wrong = 0;
    forEachRound([&](const Values& built, const Values& parsed, std::size_t) {
        if (relationsOf(built, parsed) != right)
            ++wrong;
    });
    EXPECT_EQ(wrong, 0);
}

TEST(BuiltThreads, sharedValuesAreTakenApartAndResolved)
{
    const std::vector<std::string> right = textsOf(builtValues());
    std::atomic<int> wrong = 0;
    forEachRound([&](const Values& built, const Values&, std::size_t thread) {
        for (std::size_t i = 0; i < built.size(); ++i) {
            const IRI& iri = built[(i + thread) % built.size()];
            const IRI again{IRIArgs(iri)};
            if (again.hasHost() != iri.hasHost() || again.getPath() != iri.getPath())
                ++wrong;
            if (IRI().resolveAgainst(iri).hasFragment())
                ++wrong;
        }
        if (textsOf(built) != right)
            ++wrong;
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace foundation::network
