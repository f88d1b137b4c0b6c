#include "iri/PercentCoding.hpp"

#include "iri/NaiveCoding.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

// Which characters the two steps escape that go by ranges.
namespace foundation::network::iri {
namespace {

    using network::tests::failureOf;
    using network::tests::invalidCodePoint;

    using Text = std::u32string;

    // A range with its escapes at both ends; the characters beside it are copied, unless they
    // belong to a neighbouring range.
    struct Range {
        char32_t first;
        char32_t last;
        const char32_t* firstEscaped;
        const char32_t* lastEscaped;
        bool isFreeBefore = true;
        bool isFreeAfter = true;
    };

    using Step = Text (*)(std::u32string_view);

    void expectEscaped(Step step, const Range& range)
    {
        SCOPED_TRACE(testing::Message() << std::hex << static_cast<std::uint32_t>(range.first)
                                        << '-' << static_cast<std::uint32_t>(range.last));
        const char32_t before = range.first - 1;
        const char32_t after = range.last + 1;
        EXPECT_EQ(step({&range.first, 1}), range.firstEscaped);
        EXPECT_EQ(step({&range.last, 1}), range.lastEscaped);
        if (range.isFreeBefore) {
            EXPECT_EQ(step({&before, 1}), Text(1, before));
        }
        if (range.isFreeAfter) {
            EXPECT_EQ(step({&after, 1}), Text(1, after));
        }
    }

    // RFC 3987, 2.2, iprivate; U+E0000 to U+E0FFF stand only here.
    const Range privateUse[] = {
        {0xE000, 0xF8FF, U"%EE%80%80", U"%EF%A3%BF"},
        {0xE0000, 0xE0FFF, U"%F3%A0%80%80", U"%F3%A0%BF%BF"},
        {0xF0000, 0xFFFFD, U"%F3%B0%80%80", U"%F3%BF%BF%BD"},
        {0x100000, 0x10FFFD, U"%F4%80%80%80", U"%F4%8F%BF%BD"},
    };

    TEST(EscapePrivateUse, escapesEachRangeFromEndToEnd)
    {
        for (const Range& range : privateUse)
            expectEscaped(escapePrivateUse, range);
    }

    const Range forbidden[] = {
        {0x00, 0x1F, U"%00", U"%1F", false},
        {0x7F, 0x9F, U"%7F", U"%C2%9F"},
        {U'"', U'"', U"%22", U"%22"},
        {U'<', U'<', U"%3C", U"%3C"},
        {U'>', U'>', U"%3E", U"%3E"},
        {U'\\', U'\\', U"%5C", U"%5C"},
        {U'^', U'^', U"%5E", U"%5E"},
        {U'`', U'`', U"%60", U"%60"},
        {U'{', U'}', U"%7B", U"%7D"},
        {0x200E, 0x200F, U"%E2%80%8E", U"%E2%80%8F"},
        {0x202A, 0x202E, U"%E2%80%AA", U"%E2%80%AE"},
        {0xD800, 0xDFFF, U"%ED%A0%80", U"%ED%BF%BF"},
        {0xFDD0, 0xFDEF, U"%EF%B7%90", U"%EF%B7%AF"},
        {0xFFF0, 0xFFFF, U"%EF%BF%B0", U"%EF%BF%BF"}, // U+10000 behind it is copied
        {0x1FFFE, 0x1FFFF, U"%F0%9F%BF%BE", U"%F0%9F%BF%BF"},
        {0x2FFFE, 0x2FFFF, U"%F0%AF%BF%BE", U"%F0%AF%BF%BF"},
        {0xEFFFE, 0xEFFFF, U"%F3%AF%BF%BE", U"%F3%AF%BF%BF"},
        {0xFFFFE, 0xFFFFF, U"%F3%BF%BF%BE", U"%F3%BF%BF%BF"},
        {0x10FFFE, 0x10FFFF, U"%F4%8F%BF%BE", U"%F4%8F%BF%BF"},
    };

    TEST(EscapeForbidden, escapesEachRangeFromEndToEnd)
    {
        for (const Range& range : forbidden)
            expectEscaped(escapeForbidden, range);
    }

    TEST(EscapeForbidden, escapesTheBarBetweenTheBraces)
    {
        EXPECT_EQ(escapeForbidden(U"a{|}b"), U"a%7B%7C%7Db");
    }

    TEST(EscapeForbidden, leavesWhatOtherStepsSee)
    {
        EXPECT_EQ(escapeForbidden(U" %#[]@:/?;=\u00E9\uE000"), U" %#[]@:/?;=\u00E9\uE000");
        EXPECT_EQ(escapePrivateUse(U"\"<>\x01\u200E"), U"\"<>\x01\u200E");
        EXPECT_EQ(escapeForbidden(U""), U"");
        EXPECT_EQ(escapePrivateUse(U""), U"");
    }

    TEST(EscapedRanges, areThoseOfTheNaiveStepsForEveryCodePoint)
    {
        std::size_t privateCount = 0;
        std::size_t forbiddenCount = 0;
        for (char32_t c = 0; c <= 0x10FFFF; ++c) {
            const Text itself(1, c);
            const Text inPrivate = escapePrivateUse(itself);
            const Text inForbidden = escapeForbidden(itself);
            ASSERT_EQ(inPrivate, naive::escapePrivateUse(itself)) << static_cast<std::uint32_t>(c);
            ASSERT_EQ(inForbidden, naive::escapeForbidden(itself)) << static_cast<std::uint32_t>(c);
            privateCount += inPrivate != itself ? 1U : 0U;
            forbiddenCount += inForbidden != itself ? 1U : 0U;
        }
        EXPECT_EQ(privateCount, 6400U + 4096U + 65534U + 65534U);
        // Controls, characters, directions, surrogates, noncharacters, specials, ends of planes.
        EXPECT_EQ(forbiddenCount, (32U + 33U) + 9U + (2U + 5U) + 2048U + 32U + 16U + 2U * 16U);
    }

    // Only what would have to be written as UTF-8 fails.
    TEST(EscapedRanges, copyValuesAboveTheLastCodePointUnlessTheyEndAPlane)
    {
        const Text excess = {0x110000, 0x11FFFD};
        EXPECT_EQ(escapeForbidden(excess), excess);
        EXPECT_EQ(escapePrivateUse(excess), excess);
        for (const char32_t value : {char32_t{0x11FFFE}, char32_t{0xFFFFFFFF}}) {
            EXPECT_EQ(failureOf([&] {
                          escapeForbidden({&value, 1});
                      }),
                      invalidCodePoint(value == 0x11FFFE ? "0x11fffe" : "0xffffffff"));
            EXPECT_EQ(escapePrivateUse({&value, 1}), Text(1, value));
        }
    }

} // namespace
} // namespace foundation::network::iri
