// Meant to run under ThreadSanitizer, which sees a race even when its outcome is right. Without it
// the tests still see wrong texts, and texts of one form in the place of another.

#include <foundation/network/IRI.hpp>

#include "threads/Barrier.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using Encoding = IRI::Encoding;

    constexpr std::size_t threadCount = 6;
    constexpr int roundsPerText = 300;

    const std::string texts[] = {
        "http://ü:p%40@例え.jp:0080/a/%C3%A9/b%?q=ß&%zz#ö%",
        "http://user@example.org/a/b?q#f",
        "mailto:a%41@b%E9",                     // decodes in two passes
        "//%C0%80@%C0%80/%C0%80?%C0%80#%C0%80", // does not decode
        "//%ＡＢ@%ＡＢ/%ＡＢ?%ＡＢ#%ＡＢ",      // a strict text read first changes the plain one
        "",
    };

    // What a reader answers, or why it failed.
    template <class Read>
    std::string answerOf(Read read)
    {
        try {
            return read();
        } catch (const std::exception& failure) {
            return std::string("failed: ") + failure.what();
        }
    }

    struct Reading {
        std::function<std::string(const IRI&)> read;
        bool dependsOnWhatWasRead = false;
    };

    std::vector<Reading> allReadings()
    {
        std::vector<Reading> result;
        for (unsigned form = 0; form < 6; ++form)
            for (const auto member : {&IRI::getUserInfoUtf8, &IRI::getHostUtf8,
                                      &IRI::getAuthorityUtf8, &IRI::getPathUtf8, &IRI::getQueryUtf8,
                                      &IRI::getFragmentUtf8, &IRI::getSchemeSpecificPartUtf8})
                result.push_back({[form, member](const IRI& iri) {
                    return answerOf([&] { return (iri.*member)(static_cast<Encoding>(form)); });
                }});
        for (const auto member : {&IRI::getSchemeUtf8, &IRI::getPortUtf8})
            result.push_back(
                {[member](const IRI& iri) { return answerOf([&] { return (iri.*member)(); }); }});
        for (const bool strict : {false, true}) {
            result.push_back({[strict](const IRI& iri) { return iri.toStringUtf8(strict); }});
            result.push_back(
                {[strict](const IRI& iri) { return iri.toAsciiStringUtf8(strict); }, !strict});
        }
        result.push_back({[](const IRI& iri) { return std::to_string(iri.hashValue()); }});
        result.push_back({[](const IRI& iri) {
                              std::ostringstream stream;
                              stream << iri;
                              return stream.str();
                          },
                          true});
        return result;
    }

    const std::vector<Reading> readings = allReadings();

    // The right answers to each reading: one, or two where a text depends on what was read before.
    std::vector<std::set<std::string>> rightAnswers(const std::string& text)
    {
        std::vector<std::set<std::string>> result;
        for (const Reading& reading : readings) {
            result.push_back({reading.read(IRI(text))});
            if (reading.dependsOnWhatWasRead) {
                const IRI iri(text);
                iri.toAsciiString(true);
                result.back().insert(reading.read(iri));
            }
        }
        return result;
    }

    // Complaints of all threads.
    class Complaints {
    public:
        void expect(bool isRight, const std::string& what)
        {
            if (isRight)
                return;
            const std::lock_guard guard(lock_);
            all_.insert(what);
        }

        ~Complaints()
        {
            for (const std::string& what : all_)
                ADD_FAILURE() << what;
        }

        Complaints() = default;
        Complaints(const Complaints&) = delete;
        Complaints& operator=(const Complaints&) = delete;

    private:
        std::mutex lock_;
        std::set<std::string> all_;
    };

    // Reads everything from one place in the list around to the same place.
    void readAll(const IRI& iri, std::size_t from, const std::vector<std::set<std::string>>& right,
                 Complaints& complaints)
    {
        for (std::size_t i = 0; i < readings.size(); ++i) {
            const std::size_t at = (from + i) % readings.size();
            const std::string answer = readings[at].read(iri);
            complaints.expect(right[at].contains(answer),
                              "reading " + std::to_string(at) + ": " + answer);
        }
    }

    // Runs `body(value, thread, round)` on all threads at once, with a fresh value for each round.
    template <class Make, class Body>
    void forEachRound(int rounds, Make makeValue, Body body)
    {
        decltype(makeValue()) value;
        tests::Barrier start(threadCount);
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&, thread] {
                for (int round = 0; round < rounds; ++round) {
                    if (thread == 0)
                        value = makeValue();
                    start.arriveAndWait();
                    body(*value, thread, static_cast<std::size_t>(round));
                    start.arriveAndWait();
                }
            });
        for (std::thread& thread : threads)
            thread.join();
    }

} // namespace

TEST(IRIThreads, firstReadersOfEverything)
{
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        const auto right = rightAnswers(text);
        Complaints complaints;
        forEachRound(
            roundsPerText, [&] { return std::make_unique<const IRI>(text); },
            [&](const IRI& iri, std::size_t thread, std::size_t round) {
                readAll(iri, thread * readings.size() / threadCount + round, right, complaints);
            });
    }
}

// All begin with the same reading, so that they meet in the making of the same text.
TEST(IRIThreads, firstReadersOfTheSameThing)
{
    // The longer the text, the longer the time in which they can meet.
    std::string some;
    for (int i = 0; i < 300; ++i)
        some += "ü%41例%e9";
    const std::string longText = "x://" + some + "@" + some + "/" + some + "?" + some + "#" + some;
    for (const std::string& text : {texts[0], texts[4], longText}) {
        SCOPED_TRACE(text.substr(0, 50));
        const auto right = rightAnswers(text);
        Complaints complaints;
        forEachRound(
            5 * static_cast<int>(readings.size()),
            [&] { return std::make_unique<const IRI>(text); },
            [&](const IRI& iri, std::size_t, std::size_t round) {
                const std::size_t at = round % readings.size();
                const std::string answer = readings[at].read(iri);
                complaints.expect(right[at].contains(answer),
                                  "reading " + std::to_string(at) + ": " + answer);
            });
    }
}

TEST(IRIThreads, strictAndPlainTextsOfBothFormsStayInTheirPlaces)
{
    const std::string text = texts[4];
    const IRI single(text);
    const std::string ascii = single.toAsciiStringUtf8();
    const std::string asciiStrict = single.toAsciiStringUtf8(true);
    const std::string iriStrict = single.toStringUtf8(true);
    const IRI strictFirst(text);
    strictFirst.toAsciiString(true);
    const std::string asciiAfterStrict = strictFirst.toAsciiStringUtf8();
    ASSERT_NE(ascii, asciiAfterStrict);

    Complaints complaints;
    forEachRound(
        400, [&] { return std::make_unique<const IRI>(text); },
        [&](const IRI& iri, std::size_t thread, std::size_t) {
            for (std::size_t i = 0; i < 3; ++i)
                switch ((thread + i) % 3) {
                case 0:
                    complaints.expect(iri.toStringUtf8(true) == iriStrict, "strict");
                    break;
                case 1:
                    complaints.expect(iri.toAsciiStringUtf8(true) == asciiStrict, "ASCII strict");
                    break;
                default: {
                    // Whichever it is, it stays.
                    const std::string first = iri.toAsciiStringUtf8();
                    complaints.expect(first == ascii || first == asciiAfterStrict, "ASCII");
                    complaints.expect(iri.toAsciiStringUtf8() == first, "ASCII changed");
                }
                }
        });
}

TEST(IRIThreads, copiesAreWholeWhileOthersRead)
{
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        const auto right = rightAnswers(text);
        Complaints complaints;
        forEachRound(
            roundsPerText / 2, [&] { return std::make_unique<const IRI>(text); },
            [&](const IRI& iri, std::size_t thread, std::size_t round) {
                if (thread % 2 == 0) {
                    readAll(iri, thread * 7 + round, right, complaints);
                    return;
                }
                const IRI early(iri);
                IRI assigned{std::string("x:y")};
                assigned.hashValue();
                assigned = iri;
                const IRI moved(std::move(assigned));
                const IRI late(iri);
                complaints.expect(early == iri && moved == iri && !(late != iri), "not equal");
                complaints.expect(text.empty() || moved.hashValue() == iri.hashValue(), "hash");
                readAll(early, round, right, complaints);
                readAll(late, thread, right, complaints);
            });
    }
}

TEST(IRIThreads, sharedValuesAreCompared)
{
    const std::string text = texts[0];
    const auto make = [&] {
        return std::make_unique<const std::pair<IRI, IRI>>(IRI(text), IRI(text));
    };
    const IRI other(text + "x");
    Complaints complaints;
    forEachRound(
        300, make, [&](const std::pair<IRI, IRI>& shared, std::size_t thread, std::size_t) {
            const IRI& left = thread % 2 == 0 ? shared.first : shared.second;
            const IRI& right = thread % 2 == 0 ? shared.second : shared.first;
            complaints.expect(left == right && !(left != right) && !(left < right), "not equal");
            complaints.expect(left != other && left < other, "not different");
            complaints.expect(std::hash<IRI>()(left) == std::hash<IRI>()(right), "hash");
        });
}

// The predicates, and what is handed out by value, while others make things.
TEST(IRIThreads, predicatesNeedNoGuard)
{
    const std::string text = texts[0];
    Complaints complaints;
    forEachRound(
        200, [&] { return std::make_unique<const IRI>(text); },
        [&](const IRI& iri, std::size_t thread, std::size_t) {
            if (thread % 2 == 0) {
                iri.toAsciiString(true);
                iri.hashValue();
            }
            complaints.expect(!iri.isEmpty() && iri.hasScheme() && iri.hasAuthority()
                                  && iri.hasUserInfo() && iri.hasPort() && iri.hasQuery()
                                  && iri.hasFragment() && iri.hasAbsolutePath() && !iri.isOpaque(),
                              "predicates");
            complaints.expect(iri.getPortNumber() == 80, "port");
        });
}

} // namespace foundation::network
