// Texts of 64 MiB, or of as many as ZKFLNETWORK_TEST_HUGE_MIB says: that each is parsed, converted
// and printed, or refused, in a small multiple of its own memory and on a small stack.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

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
#include <sstream>
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

        // A quarter of it, for what does a lot with it.
        std::string quarter() const { return before + repeated(piece, times() / 4) + after; }

        // As long a text of other pieces.
        std::string of(const char* otherPiece) const { return repeated(otherPiece, times()); }
    };

    std::ostream& operator<<(std::ostream& stream, const Huge& huge)
    {
        return stream << huge.before << huge.piece << huge.piece << "..." << huge.after;
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

    // Calls @p check with the text of each row.
    template <std::size_t COUNT, class Check>
    void forEachText(const Huge (&rows)[COUNT], Check check)
    {
        for (const Huge& huge : rows) {
            SCOPED_TRACE(testing::Message() << huge);
            check(huge.text());
        }
    }

} // namespace

// A value holds its text once, as UTF-8, and parsing it takes nothing besides.
TEST(IRIHuge, componentsAreParsedInTheMemoryOfTheTextAlone)
{
    struct Row {
        Huge huge;
        bool (*isRight)(const IRI&);
    };
    const Row rows[] = {
        {{"", "é", ":y"}, [](const IRI& iri) { return iri.isOpaque() && iri.getPath() == u"y"; }},
        {{"//u@", "1.", ":1"}, [](const IRI& iri) { return iri.getPortNumber() == 1; }},
        {{"//h:", "0", "8"}, [](const IRI& iri) { return iri.getPortNumber() == 8; }},
        {{"//h", "/", ""}, [](const IRI& iri) { return iri.getAuthority() == u"h"; }},
        {{"x:", "a@", "?q"}, [](const IRI& iri) { return iri.getQuery() == u"q"; }},
        {{"?", "\uE000", "#f"}, [](const IRI& iri) { return iri.getFragment() == u"f"; }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.huge);
        const std::string text = row.huge.text();
        inMemory(1, text.size(), [&] { EXPECT_TRUE(row.isRight(IRI(text))); });
    }
}

// The grammar refuses before anything is kept.
TEST(IRIHuge, whatIsNoIriIsRefusedInNoMemory)
{
    constexpr Huge rows[] = {
        {"", ":", ""},          {"x://", "a@", ""},  {"x://", "%", ""},
        {"x://[v1.", "a", "/"}, {"x://", "é", "@%"}, {"#", "#", ""},
    };
    forEachText(rows, [](const std::string& text) {
        inMemory(0, text.size(), [&] {
            EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{text}; }, "IRI parsing failed"));
            EXPECT_FALSE(IRI::tryParse(text));
            EXPECT_FALSE(iri::IRIView::parse(text));
            EXPECT_TRUE(iri::diagnose(text));
        });
    });
}

// Not even to tell what is wrong with its encoding. UTF-16 is encoded before it is read.
TEST(IRIHuge, brokenEncodingsAreRefusedInNoMemory)
{
    constexpr Huge rows[] = {{"/", "é", "\xC3"}, {"/", "a", "\xED\xA0\x80"}, {"\xFF?", "\xFF", ""}};
    forEachText(rows, [](const std::string& text) {
        inMemory(0, text.size(), [&] {
            EXPECT_TRUE(throwsExactly<AnyFailure>(
                [&] { IRI{text}; },
                "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"));
            EXPECT_TRUE(iri::diagnose(text));
        });
    });
    const std::u16string text = std::u16string(hugeBytes() / 2, u'a') + char16_t(0xD800);
    inMemory(0, text.size(), [&] {
        EXPECT_THROW(IRI{text}, RangeFailure);
        EXPECT_TRUE(iri::diagnose(text));
    });
    const std::u16string bad = std::u16string(hugeBytes() / 2, u'a') + u'\\';
    inMemory(1, bad.size(), [&] {
        EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{bad}; }, "IRI parsing failed"));
        EXPECT_TRUE(iri::diagnose(bad));
    });
}

TEST(IRIHuge, whatIsOnlyLookedAtTakesNoMemory)
{
    constexpr Huge rows[] = {{"x:/", "é/../", "?#"}, {"//h?", "a=1&", "#"}, {"//", "1.", ""}};
    forEachText(rows, [](const std::string& text) {
        inMemory(0, text.size(), [&] {
            EXPECT_FALSE(iri::diagnose(text));
            const auto view = iri::IRIView::parse(text);
            ASSERT_TRUE(view);
            for (const iri::QueryPair& pair : iri::QueryPairs(view->query().value_or("")))
                ASSERT_LE(pair.key.size(), 1U);
        });
    });
}

TEST(IRIHuge, valuesAreComparedHashedShownAndTakenApartOnASmallStack)
{
    constexpr Huge rows[] = {{"x://h/", "é/../", "?#"}, {"//h?", "a=é&", "#"}, {"//", "1.", ""}};
    for (const Huge& huge : rows) {
        SCOPED_TRACE(testing::Message() << huge);
        const std::string text = huge.quarter();
        onASmallStack([&] {
            const IRI parsed(text);
            IRIArgs args;
            parsed.toArgs(args);
            const IRI built(args);
            std::ostringstream stream;
            stream << built;
            EXPECT_TRUE(parsed == built);
            EXPECT_EQ(parsed.hashValue(), built.hashValue());
            EXPECT_TRUE(iri::repair(text) == text);
        });
    }
}

TEST(IRIHuge, aPairTakesTheMemoryOfItsText)
{
    const Huge huge{"k%3D=", "%41+", "&l"};
    const std::string text = huge.text();
    inMemory(1, text.size(), [&] {
        const iri::QueryPairs pairs(text);
        EXPECT_EQ((*pairs.begin()).value.size(), huge.times() * 2);
    });
}

// Besides the text of the value there are then the whole text, escaped, and the result. For the strict
// text, components are converted one by one, in four bytes for each character, and put together; an
// authority is put together before.
TEST(IRIHuge, textsAreEscapedAndPrintedInASmallMultipleOfTheirMemory)
{
    struct Row {
        Huge huge;
        const char* printedPiece;
        double factor;
        double strictFactor;
    };
    constexpr Row rows[] = {
        {{"//", "%41", "@h"}, "%41", 2, 5.1},       {{"//", "%c3%a9", "/"}, "%c3%a9", 2, 5.1},
        {{"x:/", "%41", "?"}, "%41", 2, 4.1},       {{"?", "aaé", "#"}, "aa%C3%A9", 2.5, 9.6},
        {{"//", "aaé", ""}, "aa%C3%A9", 2.5, 10.6},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.huge);
        const std::string text = row.huge.text();
        const std::string printed =
            row.huge.before + row.huge.of(row.printedPiece) + row.huge.after;
        std::string result;
        inMemory(row.factor, printed.size(), [&] { result = IRI(text).toAsciiStringUtf8(); });
        EXPECT_TRUE(result == printed); // EXPECT_EQ would print both
        result = std::string();
        inMemory(row.strictFactor, printed.size(),
                 [&] { result = IRI(text).toAsciiStringUtf8(true); });
        EXPECT_TRUE(result == printed);
    }
}

// What stands in an IRI otherwise than as plain text is made of it, in several steps, in four bytes for
// each character.
TEST(IRIHuge, componentsOfBuiltValuesAreConvertedInASmallMultipleOfTheirMemory)
{
    struct Row {
        Huge huge;
        const char* printedPiece;
        double factor;
    };
    constexpr Row rows[] = {
        {{"/", "é", ""}, "%C3%A9", 8.1},
        {{"/", "%41", ""}, "A", 2.1},
        {{"/", "%5B", ""}, "%5B", 15.4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.huge);
        const IRI built = IRI("?").resolveAgainst(IRI(row.huge.text()));
        const std::string printed =
            row.huge.before + row.huge.of(row.printedPiece) + row.huge.after + "?";
        std::string result;
        inMemory(row.factor, printed.size(), [&] { result = IRI(built).toAsciiStringUtf8(); });
        EXPECT_TRUE(result == printed);
    }
}

// Escapes that stand for UTF-8 are undone for whoever reads UTF-8 in one go.
TEST(IRIHuge, escapesAreDecodedInASmallMultipleOfTheirMemory)
{
    struct Row {
        Huge huge;
        const char* decodedPiece;
        char16_t decodedUnit;
        double factor;
        double factorInUtf16;
    };
    constexpr Row rows[] = {
        {{"#", "%41", ""}, "A", u'A', 2, 8.7},
        {{"#", "%E9", ""}, "é", u'é', 14.4, 14.4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.huge);
        const std::string text = row.huge.text();
        const std::string decoded = row.huge.of(row.decodedPiece);
        std::string result;
        inMemory(row.factor, text.size(),
                 [&] { result = IRI(text).getFragmentUtf8(Encoding::Decoded); });
        EXPECT_TRUE(result == decoded);
        std::u16string wide;
        inMemory(row.factorInUtf16, text.size(),
                 [&] { wide = IRI(text).getFragment(Encoding::Decoded); });
        EXPECT_TRUE(wide == std::u16string(row.huge.times(), row.decodedUnit));
    }
}

// Paths with dot segments are taken apart, in 16 bytes for each segment. The ways back between what is
// made have many of them.
TEST(IRIHuge, referencesAreResolvedAndMadeRelativeInASmallMultipleOfTheirMemory)
{
    struct Row {
        Huge reference;
        const char* base;
        double factor;
        double factorBack;
    };
    constexpr Row rows[] = {
        {{"/", "a", "?q"}, "http://h/a", 1, 1},
        {{"", "a/", "b"}, "http://h/a/b", 3.4, 10.1},
        {{"", "%61/", ""}, "http://h/a/b", 1.7, 7},
        {{"/", "é%c3%a9/", ""}, "http://h/a/b", 1.6, 4.4},
        {{"?", "%41", ""}, "http://h/a/b", 1.4, 1},
        {{"?", "%E9", ""}, "http://h/a/b", 13.4, 1.4},
        {{"", "../", "b"}, "http://h/a/b", 6.4, 1},
        {{"", "a/../", "b"}, "http://h/a/b", 7.5, 1},
        {{"", "%61/", ".."}, "http://h/a/b", 6.6, 7},
        {{"//h", "/.", ""}, "http://h/a/b", 8, 1},
        {{"", "é/", "../b"}, "http://h/a/../b", 7.4, 7.4},
        {{"", "x/a", "//.."}, "http://h/a/b", 1, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.reference);
        const IRI reference(row.reference.quarter());
        const IRI base(row.base);
        const auto lengthOf = [](const IRI& iri) { return iri.toStringUtf8().size(); };
        const std::size_t size = lengthOf(reference);
        std::optional<IRI> made;
        inMemory(row.factor, size, [&] { made = reference.resolveAgainst(base); });
        const IRI target = *made;
        inMemory(row.factor, size, [&] { made = target.makeRelativeTo(base); });
        inMemory(row.factor, size, [&] { made = base.makeRelativeTo(target); });
        const IRI upwards("../b");
        inMemory(row.factorBack, size, [&] { upwards.resolveAgainst(target); });
        inMemory(row.factorBack, lengthOf(*made) + lengthOf(target),
                 [&] { made = made->resolveAgainst(target); });
    }
}

TEST(IRIHuge, percentSignsAreRepairedInASmallMultipleOfTheirMemory)
{
    const Huge huge{"#", "%zz%%", ""};
    const std::string text = huge.text();
    const std::string repaired = huge.of("%25zz%25%25");
    std::string result;
    inMemory(2.5, repaired.size(),
             [&] { result = IRI(text).getFragmentUtf8(Encoding::IriStrict); });
    EXPECT_TRUE(result == repaired);
}

} // namespace foundation::network
