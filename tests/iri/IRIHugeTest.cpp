// Texts of 64 MiB, or of as many as ZKFLNETWORK_TEST_HUGE_MIB says: that each is parsed, converted
// and printed, or refused, in a small multiple of its own memory and on a small stack.

#include <foundation/network/IRI.hpp>

#include "iri/AllocationCounter.hpp"
#include "iri/Expect.hpp"

#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    std::size_t hugeBytes()
    {
        const char* const mebibytes =
            std::getenv("ZKFLNETWORK_TEST_HUGE_MIB"); // NOLINT(concurrency-mt-unsafe)
        return (mebibytes != nullptr ? std::stoul(mebibytes) : 64) << 20;
    }

    // A piece over and over.
    std::string repeated(const std::string& piece, std::size_t times)
    {
        std::string result = piece;
        result.reserve(piece.size() * times);
        while (result.size() * 2 <= piece.size() * times)
            result += result;
        return result += result.substr(0, piece.size() * times - result.size());
    }

    // A huge text: a piece over and over between two ends.
    struct Huge {
        const char* before;
        const char* piece;
        const char* after;

        std::size_t times() const { return hugeBytes() / std::string(piece).size(); }
        std::string text() const { return before + repeated(piece, times()) + after; }

        // As long a text of other pieces.
        std::string of(const char* otherPiece) const { return repeated(otherPiece, times()); }
    };

    std::ostream& operator<<(std::ostream& stream, const Huge& huge)
    {
        return stream << huge.before << huge.piece << huge.piece << "..." << huge.after;
    }

    // What so many code points take as UTF-32; that there are some more does not count.
    std::size_t utf32(std::size_t times, std::size_t codePointsOfPiece)
    {
        return sizeof(char32_t) * times * codePointsOfPiece;
    }

    struct Task {
        const std::function<void()>& operation;
        std::exception_ptr failure;
    };

    // Runs an operation on a thread with a stack of 256 KiB. What it throws is thrown here.
    void onASmallStack(const std::function<void()>& operation)
    {
        Task task{operation, nullptr};
        const auto run = [](void* argument) -> void* {
            auto* const given = static_cast<Task*>(argument);
            try {
                given->operation();
            } catch (...) {
                given->failure = std::current_exception();
            }
            return nullptr;
        };
        pthread_attr_t attributes;
        pthread_t thread{};
        ASSERT_EQ(pthread_attr_init(&attributes), 0);
        ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256UL * 1024), 0);
        ASSERT_EQ(pthread_create(&thread, &attributes, run, &task), 0);
        ASSERT_EQ(pthread_join(thread, nullptr), 0);
        pthread_attr_destroy(&attributes);
        if (task.failure)
            std::rethrow_exception(task.failure);
    }

    // Checks that an operation, run on a small stack, never holds more than `factor` times `unit`
    // bytes besides those that are in use before. Some are always granted, for the thread itself.
    void inMemory(double factor, std::size_t unit, const std::function<void()>& operation)
    {
        constexpr double granted = 16384;
        const std::size_t before = bytesInUse();
        forgetPeak();
        onASmallStack(operation);
        const auto most = static_cast<double>(peakBytes() - before);
        EXPECT_LE(most, factor * static_cast<double>(unit) + granted)
            << "that is " << most / static_cast<double>(unit) << " times the text";
    }

} // namespace

// A value holds its text once, as UTF-32, and parsing it takes nothing besides.
TEST(IRIHuge, componentsAreParsedInTheMemoryOfTheTextAlone)
{
    struct Row {
        Huge huge;
        std::size_t codePoints; // of the piece
        bool (*isRight)(const IRI&);
    };
    const Row rows[] = {
        {{"", "é", ":y"},
         1,
         [](const IRI& iri) { return iri.isOpaque() && iri.getPath() == u"y"; }},
        {{"//u@", "1.", ":1"}, 2, [](const IRI& iri) { return iri.getPortNumber() == 1; }},
        {{"//h:", "0", "8"}, 1, [](const IRI& iri) { return iri.getPortNumber() == 8; }},
        {{"//h", "/", ""}, 1, [](const IRI& iri) { return iri.getAuthority() == u"h"; }},
        {{"x:", "a@", "?q"}, 2, [](const IRI& iri) { return iri.getQuery() == u"q"; }},
        {{"?", "\uE000", "#f"}, 1, [](const IRI& iri) { return iri.getFragment() == u"f"; }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.huge);
        const std::string text = row.huge.text();
        inMemory(1, utf32(row.huge.times(), row.codePoints),
                 [&] { EXPECT_TRUE(row.isRight(IRI(text))); });
    }
}

TEST(IRIHuge, whatIsNoIriIsRefusedInTheMemoryOfTheTextAlone)
{
    constexpr Huge rows[] = {
        {"", ":", ""},          {"x://", "a@", ""},  {"x://", "%", ""},
        {"x://[v1.", "a", "/"}, {"x://", "é", "@%"}, {"#", "#", ""},
    };
    for (const Huge& huge : rows) {
        SCOPED_TRACE(testing::Message() << huge);
        const std::string text = huge.text();
        inMemory(1, sizeof(char32_t) * text.size(), [&] {
            EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{text}; }, "IRI parsing failed"));
        });
    }
}

// Besides the text of the value there are then the component by itself and the whole text, both
// converted, and the result. An authority is put together before the whole text is. A text that
// outgrows its memory takes twice as much, and for a moment has both.
TEST(IRIHuge, componentsAreConvertedAndPrintedInASmallMultipleOfTheirMemory)
{
    struct Row {
        Huge huge;
        const char* printedPiece;
        double factor;
    };
    constexpr Row rows[] = {
        {{"//", "%41", "@h"}, "%41", 6.1},
        {{"//", "%c3%a9", "/"}, "%c3%a9", 4.1},
        {{"x:/", "%41", "?"}, "%41", 4.1},
        {{"?", "aaé", "#"}, "aa%C3%A9", 5.3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.huge);
        const std::string text = row.huge.text();
        const std::string printed =
            row.huge.before + row.huge.of(row.printedPiece) + row.huge.after;
        std::string result;
        inMemory(row.factor, sizeof(char32_t) * printed.size(),
                 [&] { result = IRI(text).toAsciiStringUtf8(); });
        EXPECT_TRUE(result == printed); // EXPECT_EQ would print both
    }
}

TEST(IRIHuge, escapesAreDecodedInASmallMultipleOfTheirMemory)
{
    const Huge huge{"#", "%41", ""};
    const std::string text = huge.text();
    const std::string decoded = huge.of("A");
    std::string result;
    inMemory(3, utf32(huge.times(), 3),
             [&] { result = IRI(text).getFragmentUtf8(Encoding::Decoded); });
    EXPECT_TRUE(result == decoded);
}

TEST(IRIHuge, percentSignsAreRepairedInASmallMultipleOfTheirMemory)
{
    const Huge huge{"#", "%zz%%", ""};
    const std::string text = huge.text();
    const std::string repaired = huge.of("%25zz%25%25");
    std::string result;
    inMemory(3.2, utf32(huge.times(), 11),
             [&] { result = IRI(text).getFragmentUtf8(Encoding::IriStrict); });
    EXPECT_TRUE(result == repaired);
}

} // namespace foundation::network
