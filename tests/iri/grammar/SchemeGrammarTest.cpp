#include "iri/grammar/SchemeGrammar.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::iri::grammar {
namespace {

    struct Match {
        const char32_t* text;
        std::ptrdiff_t length; // 0: the grammar fails
    };
    constexpr Match schemes[] = {
        {U"a", 1},
        {U"Z", 1},
        {U"http", 4},
        {U"a1+-.", 5},
        {U"http:", 4}, // what is left over is the caller's to judge
        {U"a_b", 1},
        {U"a b", 1},
        {U"a/b", 1},
        {U"a%41", 1},
        {U"a~", 1},
        // departure: letters and digits are those of Unicode
        {U"\u00E9", 1},
        {U"\u0436\u0663.\u4E00", 4},
        {U"a\u00B2", 1},
        {U"", 0},
        {U"1a", 0},
        {U"+a", 0},
        {U"-", 0},
        {U".", 0},
        {U":", 0},
        {U" a", 0},
        {U"\u0663", 0},
        {U"\u00B2", 0},
        {U"\U0001F600", 0},
    };

    TEST(SchemeGrammar, matchesAtTheFront)
    {
        for (const Match& row : schemes) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(row.text)));
            const std::u32string text(row.text);
            auto first = text.begin();
            EXPECT_EQ(parseScheme(first, text.end()), row.length > 0);
            EXPECT_EQ(first - text.begin(), row.length);
        }
    }

    TEST(SchemeGrammar, beginsWithALetterAndGoesOnWithLettersDigitsAndThreeMarks)
    {
        for (char32_t c = 0; c <= 0x110000; ++c) {
            const bool letter = isUnicodeAlphabetic(c);
            const bool follows =
                letter || isUnicodeDecimalDigit(c) || c == U'+' || c == U'.' || c == U'-';
            const std::u32string alone(1, c);
            auto first = alone.begin();
            ASSERT_EQ(parseScheme(first, alone.end()), letter) << static_cast<std::uint32_t>(c);
            ASSERT_EQ(first == alone.end(), letter) << static_cast<std::uint32_t>(c);
            const std::u32string second{U'a', c};
            first = second.begin();
            ASSERT_TRUE(parseScheme(first, second.end()));
            ASSERT_EQ(first == second.end(), follows) << static_cast<std::uint32_t>(c);
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar
