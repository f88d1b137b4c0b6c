#include "Printing.hpp"
#include "SpiritGrammars.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace reference {

namespace {

    std::u32string widened(const std::string& text)
    {
        return {text.begin(), text.end()};
    }

    /// How many values, from 0 far beyond the last code point, a grammar takes by themselves.
    int countTaken(Match (*parse)(const std::u32string&))
    {
        int count = 0;
        for (char32_t c = 0; c < 0x220000; ++c)
            count += parse({c}).matched;
        for (char32_t c = 0xFFFF'FF00; c != 0; ++c)
            count += parse({c}).matched;
        return count;
    }

    TEST(Reference, countsTheCharactersOfItsClasses)
    {
        const int unreservedAscii = 26 + 26 + 10 + 4;
        const int ucschar = 0xD760 + 0x4D0 + 0x200 + 13 * 0xFFFE + 0xEFFE;
        EXPECT_EQ(11, countTaken(parseSubDelims));
        EXPECT_EQ(unreservedAscii + ucschar, countTaken(parseIunreserved));
        EXPECT_EQ(unreservedAscii + ucschar + 11 + 3, countTaken(parseIpchar));
        EXPECT_EQ(0, countTaken(parsePctEncoded));
    }

    TEST(Reference, countsUnicodeDigits)
    {
        int decimalDigits = 0;
        int hexDigits = 0;
        int letters = 0;
        int lettersAndDigits = 0;
        for (char32_t c = 0; c < 0x110000; ++c) {
            ReferenceParts parts;
            parseIriReference({U'/', U'/', U':', c}, parts);
            decimalDigits += parts.port == Range{3, 4};
            hexDigits += parsePctEncoded({U'%', c, c}).matched;
            letters += parseScheme({c}).matched;
            lettersAndDigits += parseScheme({U'a', c}).consumed == 2;
        }
        EXPECT_EQ(680, decimalDigits);
        EXPECT_EQ(44, hexDigits);
        EXPECT_EQ(letters + 680 + 3, lettersAndDigits); // "+", "-" and "." as well
    }

    struct Taken {
        Match (*parse)(const std::u32string&);
        const char32_t* text;
        Match expected;
    };

    const Taken taken[] = {
        {parseSubDelims, U"", {false, 0}},
        {parseSubDelims, U"!!", {true, 1}},
        {parseSubDelims, U":", {false, 0}},
        {parseIunreserved, U"", {false, 0}},
        {parseIunreserved, U"~~", {true, 1}},
        {parseIunreserved, U"%41", {false, 0}},
        {parsePctEncoded, U"", {false, 0}},
        {parsePctEncoded, U"%414", {true, 3}},
        {parsePctEncoded, U"%4", {false, 0}},
        {parsePctEncoded, U"%4g", {false, 0}},
        {parsePctEncoded, U"%\uFF10\uFF46", {true, 3}},
        {parsePctEncoded, U"%\u0660\u0661", {false, 0}},
        {parseIpchar, U"%414", {true, 3}},
        {parseIpchar, U"%4g", {true, 1}},
        {parseIpchar, U"%", {true, 1}},
        {parseIpchar, U"/", {false, 0}},
        {parseScheme, U"", {false, 0}},
        {parseScheme, U"a", {true, 1}},
        {parseScheme, U"1a", {false, 0}},
        {parseScheme, U"+a", {false, 0}},
        {parseScheme, U"a1+-.:", {true, 5}},
        {parseScheme, U"a_b", {true, 1}},
        {parseScheme, U"\u00E9\u0661", {true, 2}},
        {parseScheme, U"\u0661a", {false, 0}},
    };

    TEST(Reference, matchesTheSmallGrammarsAtTheFront)
    {
        for (const Taken& row : taken)
            EXPECT_EQ(row.expected, row.parse(row.text)) << printed(row.text);
    }

    struct Split {
        const char32_t* path;
        std::optional<std::vector<std::u32string>> segments; // absent: refused
    };

    const Split splits[] = {
        {U"a/b/c", {{U"a", U"/b", U"/c"}}},
        {U"/a/b", {{U"/a", U"/b"}}},
        {U"//a/b", {{U"//a", U"/b"}}},
        {U"a/b/", {{U"a", U"/b", U"/"}}},
        {U"/a/", {{U"/a", U"/"}}},
        {U"//a/", {{U"//a", U"/"}}},
        {U"a", {{U"a"}}},
        {U"a/", {{U"a", U"/"}}},
        {U"/", {{U"/"}}},
        {U"?#[ ", {{U"?#[ "}}},
        {U"", {}},
        {U"//", {}},
        {U"///a", {}},
        {U"a//b", {}},
        {U"a//", {}},
        {U"/a//", {}},
    };

    TEST(Reference, splitsPaths)
    {
        const std::vector<std::u32string> before{U"before"};
        for (const Split& row : splits) {
            SCOPED_TRACE(printed(row.path));
            std::vector<std::u32string> segments = before;
            EXPECT_EQ(row.segments.has_value(), splitPathSegments(row.path, segments));
            EXPECT_EQ(row.segments.value_or(before), segments);
        }
        std::vector<std::u32string> segments;
        EXPECT_TRUE(splitPathSegments({U'/', 0x110000, 0xFFFFFF2F}, segments));
        EXPECT_EQ((std::vector<std::u32string>{{U'/', 0x110000, 0xFFFFFF2F}}), segments);
    }

    struct Decoding {
        const char32_t* text;
        const char32_t* excluded;
        const char32_t* decoded; // nullptr: no match
    };

    constexpr Decoding decodings[] = {
        {U"", U"", nullptr},
        {U"a", U"", U"a"},
        {U"%41%e9", U"", U"A\u00E9"},
        {U"%4a%4A%4G", U"", U"JJ%4G"},
        {U"%0g%g0%", U"", U"%0g%g0%"},
        {U"%2f%2F%41", U"/", U"%2f%2FA"},
        {U"%2541", U"", U"%41"}, // once only
        {U"%2541", U"%", U"%2541"},
        {U"%%41", U"", U"%A"},
        {U"%4%41", U"", U"%4A"},
        {U"%\uFF14\uFF11", U"", U"%\uFF14\uFF11"}, // ASCII digits only
        {U"%\u0664\u0661", U"", U"%\u0664\u0661"},
        {U"%C3%A9", U"\u00C3", U"%C3\u00A9"},
        {U"\uFDD0 \uFFFF", U"", U"\uFDD0 \uFFFF"}, // any code point, allowed in an IRI or not
    };

    TEST(Reference, undoesEscapes)
    {
        for (const Decoding& row : decodings) {
            const std::u32string text = row.text;
            const std::u32string expected = row.decoded ? row.decoded : U"";
            SCOPED_TRACE(printed(text));
            std::u32string decoded = U"before";
            EXPECT_EQ((Match{row.decoded != nullptr, text.size()}),
                      percentDecode(text, row.excluded, decoded));
            EXPECT_EQ(expected, decoded);
        }
    }

    TEST(Reference, undoesEveryEscape)
    {
        const std::u32string digits = U"0123456789abcdefABCDEF";
        const auto valueOf = [](std::size_t digit) { return digit < 16 ? digit : digit - 6; };
        for (std::size_t high = 0; high < digits.size(); ++high) {
            for (std::size_t low = 0; low < digits.size(); ++low) {
                const std::u32string escape{U'%', digits[high], digits[low]};
                const auto value = static_cast<char32_t>(valueOf(high) * 16 + valueOf(low));
                std::u32string decoded;
                EXPECT_EQ((Match{true, 3}), percentDecode(escape, U"", decoded));
                EXPECT_EQ(std::u32string(1, value), decoded);
                EXPECT_EQ((Match{true, 3}), percentDecode(escape, {value}, decoded));
                EXPECT_EQ(escape, decoded);
            }
        }
    }

    TEST(Reference, stopsDecodingBehindTheLastCodePoint)
    {
        std::u32string decoded;
        EXPECT_EQ((Match{true, 2}), percentDecode({U'a', 0x10FFFF, 0x110000, U'b'}, U"", decoded));
        EXPECT_EQ((std::u32string{U'a', 0x10FFFF}), decoded);
        EXPECT_EQ((Match{false, 0}), percentDecode({0xFFFFFF25, U'4', U'1'}, U"", decoded));
        EXPECT_EQ((Match{true, 3}), percentDecode({0xD800, U'%', 0xDFFF}, U"", decoded));
    }

    TEST(Reference, readsEveryPort)
    {
        for (std::uint32_t value = 0; value < 700'000; ++value) {
            for (const char* zeros : {"", "0", "00000000000"}) {
                const std::u32string text = widened(zeros + std::to_string(value));
                std::uint16_t number = 12345;
                const Match match = parsePort(text, number);
                ASSERT_EQ(value < 65536, match.matched) << printed(text);
                ASSERT_EQ(match.matched ? text.size() : 0, match.consumed) << printed(text);
                ASSERT_EQ(match.matched ? value : 12345, number) << printed(text);
            }
        }
    }

    TEST(Reference, readsPortsInAsciiDigits)
    {
        std::uint16_t number = 0;
        EXPECT_EQ((Match{false, 0}), parsePort(U"", number));
        EXPECT_EQ((Match{true, 1}), parsePort(U"8a", number));
        EXPECT_EQ((Match{true, 1}), parsePort(U"8\u0663", number));
        EXPECT_EQ((Match{false, 0}), parsePort(U"\u0663", number));
        EXPECT_EQ((Match{false, 0}), parsePort(U"\u0130", number)); // the low byte of "0"
        EXPECT_EQ((Match{false, 0}), parsePort({0xFFFFFF30}, number));
        EXPECT_EQ((Match{false, 0}), parsePort(U"+1", number));
        EXPECT_EQ((Match{false, 0}), parsePort(U"-1", number));
        EXPECT_EQ((Match{false, 0}), parsePort(U" 1", number));
        EXPECT_EQ((Match{false, 0}), parsePort(U"18446744073709551617", number)); // 2^64 + 1
        EXPECT_EQ((Match{true, 100'000}), parsePort(std::u32string(100'000, U'0'), number));
        EXPECT_EQ(0, number);
    }

} // namespace

} // namespace reference
