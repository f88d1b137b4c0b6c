#include "iri/grammar/Characters.hpp"

#include "text/LaxUtf8.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

namespace foundation::network::iri::grammar {
namespace {

    struct CharacterRange {
        char32_t first, last;
    };
    using Ranges = std::initializer_list<CharacterRange>;

    bool isIn(const Ranges& ranges, char32_t c)
    {
        return std::any_of(ranges.begin(), ranges.end(), [c](const CharacterRange& range) {
            return c >= range.first && c <= range.last;
        });
    }

    bool isIn(std::u32string_view set, char32_t c)
    {
        return set.find(c) != set.npos;
    }

    // RFC 3987, 2.2, as it is printed there.
    const Ranges ucscharOfRfc = {
        {0xA0, 0xD7FF},     {0xF900, 0xFDCF},   {0xFDF0, 0xFFEF},   {0x10000, 0x1FFFD},
        {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD}, {0x40000, 0x4FFFD}, {0x50000, 0x5FFFD},
        {0x60000, 0x6FFFD}, {0x70000, 0x7FFFD}, {0x80000, 0x8FFFD}, {0x90000, 0x9FFFD},
        {0xA0000, 0xAFFFD}, {0xB0000, 0xBFFFD}, {0xC0000, 0xCFFFD}, {0xD0000, 0xDFFFD},
        {0xE1000, 0xEFFFD},
    };
    const Ranges iprivateOfRfc = {{0xE000, 0xF8FF}, {0xF0000, 0xFFFFD}, {0x100000, 0x10FFFD}};
    const Ranges alphaOfRfc = {{0x41, 0x5A}, {0x61, 0x7A}};
    const Ranges digitOfRfc = {{0x30, 0x39}};
    constexpr std::u32string_view subDelimsOfRfc = U"!$&'()*+,;=";
    constexpr std::u32string_view genDelimsOfRfc = U":/?#[]@";

    bool isIunreservedOfRfc(char32_t c)
    {
        return isIn(alphaOfRfc, c) || isIn(digitOfRfc, c) || isIn(U"-._~", c)
               || isIn(ucscharOfRfc, c);
    }

    // Every code point and what lies beyond them.
    template <class Predicate, class Expected>
    void expectSame(Predicate predicate, Expected expected)
    {
        for (char32_t c = 0; c < 0x120000; ++c)
            ASSERT_EQ(predicate(c), expected(c)) << std::hex << static_cast<std::uint32_t>(c);
        for (const char32_t c : {0x00FFFFFFU, 0x7FFFFFFFU, 0x80000000U, 0x80000041U, 0xFFFFFFFFU})
            ASSERT_EQ(predicate(c), expected(c)) << std::hex << static_cast<std::uint32_t>(c);
    }

    TEST(Characters, ucschar)
    {
        expectSame([](char32_t c) { return ucschar(c); },
                   [](char32_t c) { return isIn(ucscharOfRfc, c); });
    }

    // Departure: %xE0000-E0FFF.
    TEST(Characters, iprivate)
    {
        expectSame(
            [](char32_t c) { return iprivate(c); },
            [](char32_t c) { return isIn(iprivateOfRfc, c) || (c >= 0xE0000 && c <= 0xE0FFF); });
    }

    TEST(Characters, iunreserved)
    {
        expectSame([](char32_t c) { return iunreserved(c); }, isIunreservedOfRfc);
    }

    // Departure: the bare "%".
    TEST(Characters, ipchar)
    {
        expectSame([](char32_t c) { return ipchar(c); },
                   [](char32_t c) {
                       return isIunreservedOfRfc(c) || isIn(subDelimsOfRfc, c) || isIn(U":@%", c);
                   });
    }

    TEST(Characters, sub_delims)
    {
        expectSame([](char32_t c) { return sub_delims(c); },
                   [](char32_t c) { return isIn(subDelimsOfRfc, c); });
    }

    TEST(Characters, gen_delims)
    {
        expectSame([](char32_t c) { return gen_delims(c); },
                   [](char32_t c) { return isIn(genDelimsOfRfc, c); });
    }

    TEST(Characters, reserved)
    {
        expectSame([](char32_t c) { return reserved(c); },
                   [](char32_t c) { return isIn(genDelimsOfRfc, c) || isIn(subDelimsOfRfc, c); });
    }

    // In UTF-8, where letters are known by their leads, between two others and at the end.
    template <unsigned CLASSES>
    void expectSkippedInUtf8()
    {
        for (char32_t c = 0; c <= 0x10FFFF; ++c) {
            const std::string character = text::toLaxUtf8({&c, 1});
            for (const bool isLast : {false, true}) {
                const std::string text = "a" + character + (isLast ? "" : "\u4E00");
                Cursor at(text::Utf8Iterator(text.data()),
                          text::Utf8Iterator(text.data() + text.size()));
                skipCharacters<CLASSES>(at);
                const std::ptrdiff_t taken = at.position().base() - text.data();
                ASSERT_EQ(taken, ucscharOr(c, CLASSES) ? std::ssize(text) : 1)
                    << std::hex << static_cast<std::uint32_t>(c);
            }
        }
    }

    TEST(Characters, areSkippedInUtf8)
    {
        expectSkippedInUtf8<IPCHAR>();
        expectSkippedInUtf8<UNRESERVED>();
    }

    // What follows a lead of a letter may be none of it.
    TEST(Characters, areNotSkippedWhereSequencesAreBroken)
    {
        for (const char* broken :
             {"\xC3/", "\xC3\xC3\xA9", "\xE4/\xBF", "\xE4\xBF/", "\xE4\xBF\xC3", "\xBF",
              "\xED\xA0\x80", "\xC0\x80", "\xE0\x80\x80"}) {
            const std::string text = "a" + std::string(broken) + "bcd";
            SCOPED_TRACE(testing::PrintToString(text));
            Cursor at(text::Utf8Iterator(text.data()),
                      text::Utf8Iterator(text.data() + text.size()));
            skipCharacters<IPCHAR>(at);
            EXPECT_EQ(at.position().base() - text.data(), 1);
        }
    }

    struct Escape {
        const char32_t* text;
        std::ptrdiff_t length; // 0: pct-encoded fails
    };
    constexpr Escape escapes[] = {
        {U"%41", 3},
        {U"%aF", 3},
        {U"%00", 3},
        {U"%411", 3},
        {U"%zz", 0},
        {U"%4z", 0},
        {U"%z4", 0},
        {U"%4", 0},
        {U"%", 0},
        {U"", 0},
        {U"41", 0},
        {U"%%41", 0},
        {U"%\uFF21\uFF22", 3}, // departure: full-width forms
        {U"%4\uFF46", 3},
        {U"%\u0663\u0664", 0},
        {U"%\uFF27\uFF10", 0},
    };

    TEST(Characters, pct_encoded)
    {
        for (const Escape& row : escapes) {
            const std::u32string_view text(row.text);
            SCOPED_TRACE(testing::PrintToString(std::u32string(text)));
            Cursor at(text.begin(), text.end());
            EXPECT_EQ(pct_encoded(at), row.length > 0);
            EXPECT_EQ(at.position() - text.begin(), row.length);
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar
