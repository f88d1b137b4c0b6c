// Many threads on the same values, and a hand in the scheduler: they yield and sleep for times that
// a seed draws, so that each run meets others in other places. Meant to run under ThreadSanitizer as
// well, which sees a race even when its outcome is right.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "threads/Barrier.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <mutex>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace foundation::network {
namespace {

    using Encoding = IRI::Encoding;

    constexpr std::size_t threadCount = 8;
    constexpr std::size_t operationsOfARound = 250; // of one thread
    constexpr unsigned SEED = 3987;

    // How many operations there are in all: two million in an ordinary run.
    std::size_t operationCount()
    {
        const char* const factor =
            std::getenv("ZKFLNETWORK_TEST_FACTOR"); // NOLINT(concurrency-mt-unsafe)
        return static_cast<std::size_t>(2'000'000 * (factor ? std::stod(factor) : 1.0));
    }

    // What the threads share. No answer depends on what was read before; IRIThreadsTest has those that
    // do.
    struct Maker {
        const char* name;
        IRI (*make)();
    };

    IRI parsed(const char* text)
    {
        return IRI(std::string(text));
    }

    IRI built(const char* name)
    {
        IRIArgs args;
        args.setScheme("x").setUserInfo(name).setHost(name).setPort(8);
        return IRI(args.setPath(std::string("/") + name).setQuery(name).setFragment(name));
    }

    const Maker makers[] = {
        {"parsed", [] { return parsed("http://ü:p%40@例え.jp:0080/a/%C3%A9/b?q=ß&a%26#ö%20"); }},
        {"ASCII", [] { return parsed("http://user@example.org/a/b?q#f"); }},
        {"opaque", [] { return parsed("mailto:a%41@b%E9"); }},
        {"undecodable", [] { return parsed("//%C0%80@%C0%80/%C0%80?%C0%80#%C0%80"); }},
        {"empty text", [] { return parsed(""); }},
        {"built", [] { return built("ä b!例"); }},
        {"pairs",
         [] {
             return IRI(IRIArgs().setPath("p:q").appendQueryKeyValuePair("é &", "b", true, false));
         }},
        {"resolved",
         [] { return parsed("../é#%20").resolveAgainst(parsed("http://ü%20@h%41/%7e/x?q")); }},
        {"relative",
         [] { return parsed("http://h/ä/%41/x?é").makeRelativeTo(parsed("http://h/ä/b/c")); }},
    };

    constexpr std::size_t makerCount = std::size(makers);

    using Values = std::vector<IRI>;

    Values makeValues()
    {
        Values result;
        result.reserve(makerCount);
        for (const Maker& maker : makers)
            result.push_back(maker.make());
        return result;
    }

    std::string text(const std::string& utf8)
    {
        return utf8;
    }

    std::string text(const std::u16string& utf16)
    {
        std::string result;
        for (const char16_t unit : utf16)
            result += std::to_string(unit) + ' ';
        return result;
    }

    template <class Read>
    std::string answerOf(Read read)
    {
        try {
            return text(read());
        } catch (const std::exception& failure) {
            return std::string("failed: ") + failure.what();
        }
    }

    // One operation on a value, with another one beside it.
    using Operation = std::function<std::string(const IRI&, const IRI&)>;

    template <class Read>
    void add(std::vector<Operation>& operations, Read read)
    {
        operations.push_back(
            [read](const IRI& iri, const IRI&) { return answerOf([&] { return read(iri); }); });
    }

    template <class Reader>
    void addForms(std::vector<Operation>& operations, std::initializer_list<Reader> readers)
    {
        for (const Reader reader : readers)
            for (unsigned form = 0; form < 5; ++form)
                add(operations, [reader, form](const IRI& iri) {
                    return (iri.*reader)(static_cast<Encoding>(form));
                });
    }

    template <class Reader>
    void addWholes(std::vector<Operation>& operations, std::initializer_list<Reader> readers)
    {
        for (const Reader reader : readers)
            for (const bool strict : {false, true})
                add(operations, [reader, strict](const IRI& iri) { return (iri.*reader)(strict); });
    }

    std::string relationOf(const IRI& left, const IRI& right)
    {
        return std::string(left == right ? "=" : "-") + (left != right ? '!' : '-')
               + (left < right ? '<' : '-');
    }

    // What resolving an empty reference gives is a copy of the base with what was made of it, so that
    // its whole text may show the base's fragment.
    std::string componentsOf(const IRI& iri)
    {
        return (iri.hasScheme() ? iri.getSchemeUtf8() + ':' : std::string())
               + iri.getSchemeSpecificPartUtf8(Encoding::IriStrict)
               + (iri.hasFragment() ? '#' + iri.getFragmentUtf8(Encoding::IriStrict)
                                    : std::string());
    }

    std::vector<Operation> allOperations()
    {
        std::vector<Operation> result;
        addForms(result, {&IRI::getUserInfoUtf8, &IRI::getHostUtf8, &IRI::getAuthorityUtf8,
                          &IRI::getPathUtf8, &IRI::getQueryUtf8, &IRI::getFragmentUtf8,
                          &IRI::getSchemeSpecificPartUtf8});
        addForms(result, {&IRI::getUserInfo, &IRI::getHost, &IRI::getAuthority, &IRI::getPath,
                          &IRI::getQuery, &IRI::getFragment, &IRI::getSchemeSpecificPart});
        addWholes(result, {&IRI::toStringUtf8, &IRI::toAsciiStringUtf8});
        addWholes(result, {&IRI::toString, &IRI::toAsciiString});
        add(result, [](const IRI& iri) { return iri.getSchemeUtf8(); });
        add(result, [](const IRI& iri) { return iri.getPortUtf8(); });
        add(result, [](const IRI& iri) { return std::to_string(iri.hashValue()); });
        add(result, [](const IRI& iri) { return std::to_string(std::hash<IRI>()(iri)); });
        add(result, [](const IRI& iri) {
            std::ostringstream stream;
            stream << iri;
            return stream.str();
        });
        // Copies, early and late, which read for themselves.
        add(result, [](const IRI& iri) { return IRI(iri).getPathUtf8(Encoding::Decoded); });
        add(result, [](const IRI& iri) { return IRI(iri).toAsciiStringUtf8(); });
        add(result, [](const IRI& iri) {
            IRI assigned(std::string("x:y"));
            assigned.hashValue();
            assigned = iri;
            return IRI(std::move(assigned)).toStringUtf8(true);
        });
        add(result, [](const IRI& iri) { return IRI(IRIArgs(iri)).toStringUtf8(true); });
        result.emplace_back([](const IRI& iri, const IRI& base) {
            return answerOf([&] { return componentsOf(iri.resolveAgainst(base)); });
        });
        result.emplace_back([](const IRI& iri, const IRI& base) {
            return answerOf([&] { return iri.makeRelativeTo(base).toStringUtf8(true); });
        });
        result.emplace_back([](const IRI& iri, const IRI& other) {
            return answerOf([&] { return relationOf(iri, other) + relationOf(other, iri); });
        });
        return result;
    }

    const std::vector<Operation> operations = allOperations();

    // The answers that each operation gives on values of its own.
    class RightAnswers {
    public:
        RightAnswers()
        {
            for (const Maker& value : makers)
                for (const Maker& other : makers)
                    for (const Operation& operation : operations)
                        answers_.push_back(operation(value.make(), other.make()));
        }

        const std::string& of(std::size_t value, std::size_t other, std::size_t operation) const
        {
            return answers_[(value * makerCount + other) * operations.size() + operation];
        }

    private:
        std::vector<std::string> answers_;
    };

    // What is wrong, each thing once.
    class Complaints {
    public:
        void add(std::size_t value, std::size_t operation, const std::string& answer)
        {
            const std::lock_guard guard(lock_);
            all_.insert(std::string(makers[value].name) + ", operation " + std::to_string(operation)
                        + ": " + answer);
        }

        const std::set<std::string>& all() const { return all_; }

    private:
        std::mutex lock_;
        std::set<std::string> all_;
    };

    // Sometimes gives the processor away, or sleeps a little.
    void stir(std::mt19937& random)
    {
        const auto drawn = random() % 128;
        if (drawn == 0)
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 50));
        else if (drawn < 12)
            std::this_thread::yield();
    }

    // The operations of one thread on the values of one round. All threads begin with the same one,
    // in which they meet.
    void work(const Values& values, std::size_t round, const RightAnswers& right,
              std::mt19937& random, Complaints& complaints)
    {
        for (std::size_t i = 0; i < operationsOfARound; ++i) {
            const std::size_t drawn = i == 0 ? round : random();
            const std::size_t value = drawn % makerCount;
            const std::size_t operation = drawn / makerCount % operations.size();
            const std::size_t other = i == 0 ? 0 : random() % makerCount;
            stir(random);
            const std::string answer = operations[operation](values[value], values[other]);
            if (answer != right.of(value, other, operation))
                complaints.add(value, operation, answer);
        }
    }

    TEST(StirredThreads, findWhatAValueOfTheirOwnWouldTell)
    {
        const std::size_t rounds = operationCount() / (threadCount * operationsOfARound);
        ASSERT_GT(rounds, 0U);
        const RightAnswers right;
        Complaints complaints;
        Values values;
        tests::Barrier meeting(threadCount);
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&, thread] {
                std::mt19937 random(SEED + static_cast<unsigned>(thread));
                for (std::size_t round = 0; round < rounds; ++round) {
                    if (thread == 0)
                        values = makeValues(); // for which nothing was made yet
                    meeting.arriveAndWait();
                    work(values, round, right, random, complaints);
                    meeting.arriveAndWait();
                }
            });
        for (std::thread& thread : threads)
            thread.join();
        for (const std::string& complaint : complaints.all())
            ADD_FAILURE() << complaint << " (seed " << SEED << ")";
    }

} // namespace
} // namespace foundation::network
