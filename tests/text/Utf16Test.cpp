#include "text/Utf.hpp"

#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::text {
namespace {

    using namespace std::string_literals;
    using tests::Failure;
    using tests::failureOf;
    using tests::invalidCodePoint;
    using tests::misplacedSurrogate;

    struct Pairing {
        std::u16string utf16;
        std::u32string utf32;
    };

    const Pairing pairings[] = {
        {u"", U""},
        {u"a", U"a"},
        {u"\0"s, U"\0"s},
        {u"a\0b"s, U"a\0b"s},
        {{0xD7FF}, {0xD7FF}}, // the neighbours of the surrogates
        {{0xE000}, {0xE000}},
        {{0xFFFF}, {0xFFFF}},
        {{0xD800, 0xDC00}, {0x10000}}, // the four corners of the pairs
        {{0xD800, 0xDFFF}, {0x103FF}},
        {{0xDBFF, 0xDC00}, {0x10FC00}},
        {{0xDBFF, 0xDFFF}, {0x10FFFF}},
        {{0xD83D, 0xDE00}, {0x1F600}},
        {{u'a', 0xD83D, 0xDE00, 0xD83D, 0xDE01, u'b'}, {U'a', 0x1F600, 0x1F601, U'b'}},
    };

    TEST(Utf16, isReadAndWrittenAsCodePoints)
    {
        for (const Pairing& row : pairings) {
            SCOPED_TRACE(testing::PrintToString(row.utf32));
            EXPECT_EQ(toUtf32(row.utf16), row.utf32);
            EXPECT_EQ(toUtf16(row.utf32), row.utf16);
            EXPECT_EQ(encodeUtf8(row.utf16), toUtf8(row.utf32));
        }
    }

    struct Misplacement {
        std::u16string utf16;
        const char* unit;
    };

    const Misplacement misplacements[] = {
        {{0xD800, 0x0041}, "0x41"}, // behind a high surrogate the next unit is at fault
        {{0xD800, 0x0000}, "0"},
        {{0xD800, 0xD7FF}, "0xd7ff"},
        {{0xD800, 0xE000}, "0xe000"},
        {{0xD800, 0xFFFF}, "0xffff"},
        {{0xD800, 0xD800, 0xDC00}, "0xd800"},
        {{0xDBFF, 0xDBFF}, "0xdbff"},
        {{0xDC00}, "0xdc00"}, // a low surrogate without a high one is at fault itself
        {{0xDFFF, 0x0041}, "0xdfff"},
        {{u'a', 0xDC01}, "0xdc01"},
        {{0xDC00, 0xD800}, "0xdc00"},
        {{0xD800, 0xDC00, 0xDC02}, "0xdc02"},
        {{0xD800}, "0"}, // at the end the terminating zero is
        {{u'a', 0xDBFF}, "0"},
        {{0xD800, 0xDC00, 0xD801}, "0"},
        {{0xD800, 0x0041, 0xDC00}, "0x41"}, // the first of two
    };

    TEST(Utf16, withAMisplacedSurrogateIsRefused)
    {
        for (const Misplacement& row : misplacements) {
            SCOPED_TRACE(testing::PrintToString(row.utf16));
            EXPECT_EQ(failureOf([&] { toUtf32(row.utf16); }), misplacedSurrogate(row.unit));
            EXPECT_EQ(encodeUtf8(row.utf16), std::nullopt);
        }
    }

    TEST(Utf16, ofEveryCodePointBecomesItsUtf8)
    {
        for (char32_t c = 0; c <= MAX_CODE_POINT; ++c) {
            if (c >= 0xD800 && c < 0xE000)
                continue;
            const std::u32string text{U'a', c};
            ASSERT_EQ(encodeUtf8(toUtf16(text)), toUtf8(text));
        }
    }

    TEST(Utf16, isReadToTheEndOfTheViewOnly)
    {
        const std::u16string text = {u'a', 0xD800, 0xDC00};
        EXPECT_EQ(toUtf32(std::u16string_view(text).substr(0, 1)), U"a");
        EXPECT_EQ(failureOf([&] { toUtf32(std::u16string_view(text).substr(0, 2)); }),
                  misplacedSurrogate("0"));
        EXPECT_EQ(toUtf32(std::u16string_view()), U"");
    }

    struct Excess {
        char32_t value;
        const char* shown;
    };

    constexpr Excess excesses[] = {
        {0xD800, "0xd800"},
        {0xDBFF, "0xdbff"},
        {0xDC00, "0xdc00"},
        {0xDFFF, "0xdfff"},
        {0x110000, "0x110000"},
        {0xD8000000, "0xd8000000"}, // the whole value is tested and shown
        {0xFFFFFFFF, "0xffffffff"},
    };

    TEST(Utf16, isNotWrittenForSurrogatesAndValuesAboveTheLastCodePoint)
    {
        for (const Excess& row : excesses) {
            SCOPED_TRACE(row.shown);
            const std::u32string inside = {U'a', row.value, U'b'};
            EXPECT_EQ(failureOf([&] { toUtf16({&row.value, 1}); }), invalidCodePoint(row.shown));
            EXPECT_EQ(failureOf([&] { toUtf16(inside); }), invalidCodePoint(row.shown));
        }
    }

    // A pair of surrogates in UTF-32 is not a character.
    TEST(Utf16, isNotWrittenForAPairOfSurrogates)
    {
        const std::u32string pair = {0xD83D, 0xDE00};
        EXPECT_EQ(failureOf([&] { toUtf16(pair); }), invalidCodePoint("0xd83d"));
    }

    // RFC 2781, 2.1, calculated with the numbers of that text.
    std::u16string pairOf(char32_t c)
    {
        const char32_t rest = c - 0x10000;
        return {static_cast<char16_t>(0xD800 + rest / 0x400),
                static_cast<char16_t>(0xDC00 + rest % 0x400)};
    }

    TEST(Utf16, ofEveryCodePointReadsBack)
    {
        for (char32_t c = 0; c <= MAX_CODE_POINT; ++c) {
            if (c >= 0xD800 && c <= 0xDFFF)
                continue;
            const std::u16string expected =
                c < 0x10000 ? std::u16string(1, static_cast<char16_t>(c)) : pairOf(c);
            ASSERT_EQ(toUtf16({&c, 1}), expected) << static_cast<std::uint32_t>(c);
            ASSERT_EQ(toUtf32(expected), std::u32string(1, c)) << static_cast<std::uint32_t>(c);
        }
    }

    TEST(Utf16, isNotWrittenForAnySurrogate)
    {
        for (char32_t c = 0xD800; c <= 0xDFFF; ++c)
            ASSERT_THROW(toUtf16({&c, 1}), std::out_of_range) << static_cast<std::uint32_t>(c);
    }

    // What two units read as; nothing if they are refused.
    std::optional<std::u32string> expectedOf(char16_t first, char16_t second)
    {
        const auto isHigh = [](char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
        const auto isLow = [](char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
        if (isHigh(first) && isLow(second)) {
            const char32_t high = first - 0xD800U;
            return std::u32string{0x10000 + high * 0x400 + (second - 0xDC00U)};
        }
        if (isHigh(first) || isLow(first) || isHigh(second) || isLow(second))
            return std::nullopt;
        return std::u32string{first, second};
    }

    TEST(Utf16, isReadOrRefusedForEveryUnitBesideTheLimitsOfTheOthers)
    {
        constexpr char16_t edges[] = {0x41, 0xD7FF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000};
        const auto check = [](char16_t first, char16_t second) {
            const auto expected = expectedOf(first, second);
            std::optional<std::u32string> read;
            const auto failure = failureOf([&] { read = toUtf32(std::u16string{first, second}); });
            const bool isAlike = failure.has_value() != expected.has_value() && read == expected;
            ASSERT_TRUE(isAlike) << testing::PrintToString(std::u16string{first, second});
        };
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            for (const char16_t edge : edges) {
                check(static_cast<char16_t>(unit), edge);
                check(edge, static_cast<char16_t>(unit));
            }
        }
    }

} // namespace
} // namespace foundation::network::text
