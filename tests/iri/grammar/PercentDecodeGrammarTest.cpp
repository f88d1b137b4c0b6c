#include "iri/grammar/PercentDecodeGrammar.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace foundation::network::iri::grammar {
namespace {

    struct Decoding {
        std::u32string text;
        std::u32string excluded;
        std::u32string decoded;
        std::u32string leftOver = {};
        bool matched = true;
    };
    const Decoding decodings[] = {
        {U"abc", U"", U"abc"},
        {U"%41", U"", U"A"},
        {U"a%20b", U"", U"a b"},
        {U"%7e%7E", U"", U"~~"},
        {U"%411", U"", U"A1"},
        {U"%2541", U"", U"%41"}, // once, not twice
        {U"%%41", U"", U"%A"},
        {U"%4%41", U"", U"%4A"},
        {U"%C3%A9", U"", U"\u00C3\u00A9"}, // a code point for each byte
        {U"%ff", U"", U"\u00FF"},
        {U"a%00b", U"", {U'a', U'\0', U'b'}},
        {U"\u00E9%41\U0010FFFF", U"", U"\u00E9A\U0010FFFF"},
        // what is no escape is ordinary text
        {U"%", U"", U"%"},
        {U"100%", U"", U"100%"},
        {U"%4", U"", U"%4"},
        {U"%zz", U"", U"%zz"},
        {U"%4z", U"", U"%4z"},
        {U"%z4", U"", U"%z4"},
        {U"% 41", U"", U"% 41"},
        {U"%+4", U"", U"%+4"},
        {U"%0x", U"", U"%0x"},
        {U"%\uFF21\uFF22", U"", U"%\uFF21\uFF22"}, // the digits are ASCII
        {U"%\u0664\u0661", U"", U"%\u0664\u0661"},
        // escapes of excluded values stay, with the digits that they have
        {U"a%20b", U" ", U"a%20b"},
        {U"%2f%2F%2e", U"/", U"%2f%2F."},
        {U"%25%41", U"%", U"%25A"},
        {U"%2541", U"%", U"%2541"},
        {U"%252f", U"%/", U"%252f"},
        {U"%41%42%43", U"CA", U"%41B%43"},
        {U"%00", {U'\0'}, U"%00"},
        {U"A", U"A", U"A"},        // only its escape is excluded
        {U"%41", U"\u0141", U"A"}, // not the character with the same low byte
        // at most code points; at least one
        {U"", U"", U"", U"", false},
        {{0x110000}, U"", U"", {0x110000}, false},
        {{U'%', U'4', U'1', 0x110000, U'b'}, U"", U"A", {0x110000, U'b'}},
        {{U'%', 0xFFFFFFFF}, U"", U"%", {0xFFFFFFFF}},
        {{0xD800}, U"", {0xD800}},
    };

    TEST(PercentDecodeGrammar, undoesEscapes)
    {
        for (const Decoding& row : decodings) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            const std::u32string_view text = row.text;
            auto first = text.begin();
            std::u32string decoded;
            EXPECT_EQ(percentDecode(first, text.end(), row.excluded, decoded), row.matched);
            EXPECT_EQ(decoded, row.decoded);
            EXPECT_EQ(std::u32string(first, text.end()), row.leftOver);
        }
    }

    TEST(PercentDecodeGrammar, appendsToTheResult)
    {
        const std::u32string_view text = U"%41b";
        auto first = text.begin();
        std::u32string decoded = U"before ";
        EXPECT_TRUE(percentDecode(first, text.end(), {}, decoded));
        EXPECT_EQ(decoded, U"before Ab");
    }

    TEST(PercentDecodeGrammar, readsEveryPairOfDigitsAndExcludesEveryValue)
    {
        constexpr std::u32string_view LOWER = U"0123456789abcdef";
        constexpr std::u32string_view UPPER = U"0123456789ABCDEF";
        for (char32_t value = 0; value < 256; ++value) {
            SCOPED_TRACE(static_cast<std::uint32_t>(value));
            const std::u32string texts[] = {
                {U'%', LOWER[value / 16], LOWER[value % 16]},
                {U'%', UPPER[value / 16], UPPER[value % 16]},
                {U'%', LOWER[value / 16], UPPER[value % 16]},
            };
            const std::u32string itself(1, value);
            for (const std::u32string_view text : texts) {
                std::u32string decoded;
                auto first = text.begin();
                EXPECT_TRUE(percentDecode(first, text.end(), {}, decoded));
                EXPECT_EQ(decoded, itself);
                decoded.clear();
                first = text.begin();
                EXPECT_TRUE(percentDecode(first, text.end(), itself, decoded));
                EXPECT_EQ(decoded, text);
                EXPECT_TRUE(first == text.end());
            }
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar
