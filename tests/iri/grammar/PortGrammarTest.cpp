#include "iri/grammar/PortGrammar.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::iri::grammar {
namespace {

    struct Port {
        std::u32string text;
        int number; // -1: the whole text is no port number
    };
    const Port ports[] = {
        {U"0", 0},
        {U"80", 80},
        {U"00080", 80},
        {U"65535", 65535},
        {U"065535", 65535},
        {std::u32string(1000, U'0'), 0},
        {std::u32string(1000, U'0') + U"443", 443}, // no limit to the number of digits
        {U"65536", -1},
        {U"70000", -1},
        {U"655350", -1},
        {U"99999", -1},
        {U"4294967296", -1},           // 2^32
        {U"4294967376", -1},           // 2^32 + 80
        {U"18446744073709551696", -1}, // 2^64 + 80
        {std::u32string(1000, U'9'), -1},
        {U"", -1},
        {U"8a", -1},
        {U"a8", -1},
        {U"-1", -1},
        {U"+1", -1},
        {U" 1", -1},
        {U"1 ", -1},
        {U"1.0", -1},
        {U"0x50", -1},
        {U"\u0663", -1}, // the digits are ASCII
        {U"8\u0660", -1},
        {U"\uFF11", -1},
        {{U'8', 0x110030}, -1},
    };

    TEST(PortGrammar, readsAWholeText)
    {
        for (const Port& row : ports) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            std::uint16_t number = 0;
            ASSERT_EQ(portStringToNumeric(row.text, number), row.number >= 0);
            if (row.number >= 0) {
                EXPECT_EQ(number, row.number);
            }
        }
    }

    TEST(PortGrammar, readsEveryPort)
    {
        for (int expected = 0; expected <= 0x10000; ++expected) {
            const std::string digits = std::to_string(expected);
            std::uint16_t number = 1;
            ASSERT_EQ(portStringToNumeric(std::u32string(digits.begin(), digits.end()), number),
                      expected <= 65535)
                << expected;
            ASSERT_EQ(number, expected <= 65535 ? expected : 1);
        }
    }

    struct Match {
        const char32_t* text;
        std::ptrdiff_t length; // 0: the grammar fails
        std::uint16_t number;
    };
    constexpr Match matches[] = {
        {U"80", 2, 80},    {U"80/", 2, 80},   {U"8 0", 1, 8}, {U"0a", 1, 0},
        {U"655360", 0, 0}, {U"65536a", 0, 0}, {U"a", 0, 0},   {U"", 0, 0},
    };

    TEST(PortGrammar, matchesAtTheFront)
    {
        constexpr std::uint16_t UNTOUCHED = 4711;
        for (const Match& row : matches) {
            const std::u32string_view text = row.text;
            SCOPED_TRACE(testing::PrintToString(std::u32string(text)));
            auto first = text.begin();
            std::uint16_t number = UNTOUCHED;
            EXPECT_EQ(parsePort(first, text.end(), number), row.length > 0);
            EXPECT_EQ(first - text.begin(), row.length);
            EXPECT_EQ(number, row.length > 0 ? row.number : UNTOUCHED);
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar
