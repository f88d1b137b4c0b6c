#include "iri/grammar/AddressProductions.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace foundation::network::iri::grammar {
namespace {

    using It = std::u32string::const_iterator;
    using Production = bool (*)(Cursor<It>&);

    /// What a production takes from the front of a text; nothing if it fails, and then the cursor
    /// must stand where it stood.
    std::optional<std::u32string> match(Production production, const std::u32string& text)
    {
        Cursor at(text.begin(), text.end());
        if (production(at))
            return std::u32string(text.begin(), at.position());
        EXPECT_TRUE(at.position() == text.begin()) << "a failed production moved the cursor";
        return std::nullopt;
    }

    struct Match {
        const char32_t* text;
        const char32_t* taken; // nullptr: the production fails
    };

    template <std::size_t COUNT>
    void expectMatches(Production production, const Match (&rows)[COUNT])
    {
        for (const Match& row : rows) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(row.text)));
            const auto taken = match(production, row.text);
            ASSERT_EQ(taken.has_value(), row.taken != nullptr);
            if (taken) {
                EXPECT_EQ(*taken, row.taken);
            }
        }
    }

    constexpr Match octets[] = {
        {U"0", U"0"},         {U"9", U"9"},          {U"10", U"10"},     {U"99", U"99"},
        {U"100", U"100"},     {U"199", U"199"},      {U"249", U"249"},   {U"255", U"255"},
        {U"0.", U"0"},        {U"0a", U"0"},         {U"1234", U"123"}, // at most three digits
        {U"2550", U"255"},    {U"1\u0663", U"1"},                       // digits are ASCII
        {U"00", nullptr},                                               // no leading zero
        {U"01", nullptr},     {U"0\u0663", nullptr}, // of whatever script the digit behind it is
        {U"256", nullptr},                           // and not "25"
        {U"260", nullptr},    {U"999", nullptr},     {U"3000", nullptr}, // not "30" either
        {U"\u0663", nullptr}, {U"\uFF11", nullptr},  {U"", nullptr},     {U"a", nullptr},
        {U".", nullptr},      {U"-1", nullptr},
    };

    TEST(AddressProductions, dec_octet)
    {
        expectMatches(dec_octet, octets);
    }

    TEST(AddressProductions, dec_octetIsEveryNumberUpTo255)
    {
        for (int number = 0; number < 1000; ++number) {
            const std::string digits = std::to_string(number);
            const std::u32string text(digits.begin(), digits.end());
            SCOPED_TRACE(number);
            EXPECT_EQ(match(dec_octet, text).has_value(), number <= 255);
        }
    }

    constexpr Match quads[] = {
        {U"1.2.3.4", U"1.2.3.4"},
        {U"0.0.0.0", U"0.0.0.0"},
        {U"255.255.255.255", U"255.255.255.255"},
        {U"1.2.3.4.5", U"1.2.3.4"},
        {U"1.2.3.4a", U"1.2.3.4"},
        {U"1.2.3.2555", U"1.2.3.255"},
        {U"1.2.3.256", nullptr},
        {U"256.2.3.4", nullptr},
        {U"1.256.3.4", nullptr},
        {U"1.2.256.4", nullptr},
        {U"01.2.3.4", nullptr},
        {U"1.2.3.00", nullptr},
        {U"1.2.3", nullptr},
        {U"1.2.3.", nullptr},
        {U"1..3.4", nullptr},
        {U".1.2.3", nullptr},
        {U"1.2.3.\u0664", nullptr},
        {U"", nullptr},
    };

    TEST(AddressProductions, IPv4address)
    {
        expectMatches(IPv4address, quads);
    }

    constexpr Match groups16[] = {
        {U"0", U"0"},
        {U"aF09", U"aF09"},
        {U"12345", U"1234"},
        {U"0000", U"0000"},
        {U"1:", U"1"},
        {U"1g", U"1"},
        {U"\uFF211\uFF46\uFF10", U"\uFF211\uFF46\uFF10"},
        {U"g", nullptr},
        {U":", nullptr},
        {U"\u0663", nullptr},
        {U"", nullptr},
    };

    TEST(AddressProductions, h16)
    {
        expectMatches(h16, groups16);
    }

    constexpr Match last32[] = {
        {U"1:2", U"1:2"},
        {U"abcd:EF01", U"abcd:EF01"},
        {U"1.2.3.4", U"1.2.3.4"},
        {U"1:2:3", U"1:2"},
        {U"1:2.3.4.5", U"1:2"}, // the first alternative decides
        {U"12.34.56.78", U"12.34.56.78"},
        {U"1:", nullptr},
        {U"1::2", nullptr},
        {U":1", nullptr},
        {U"12345:1", nullptr},
        {U"1.2.3", nullptr},
        {U"1", nullptr},
        {U"", nullptr},
    };

    TEST(AddressProductions, ls32)
    {
        expectMatches(ls32, last32);
    }

    constexpr Match futures[] = {
        {U"v1.x", U"v1.x"},
        {U"vaF09.x:y", U"vaF09.x:y"},
        {U"v1.:", U"v1.:"},
        {U"v1..", U"v1.."},
        {U"v1.az09-._~!$&'()*+,;=:", U"v1.az09-._~!$&'()*+,;=:"},
        {U"v1.\u00E9\U00010000", U"v1.\u00E9\U00010000"},
        {U"v\uFF11\uFF46.x", U"v\uFF11\uFF46.x"},
        {U"v1.x]", U"v1.x"},
        {U"v1.x%41", U"v1.x"}, // escapes are no part of it
        {U"v1.x/", U"v1.x"},
        {U"v1.x@", U"v1.x"},
        {U"v.x", nullptr},
        {U"v1.", nullptr},
        {U"v1", nullptr},
        {U"v1x", nullptr},
        {U"v1.]", nullptr},
        {U"v1.%41", nullptr},
        {U"v1.\uE000", nullptr},
        {U"vg.x", nullptr},
        {U"V1.x", nullptr},
        {U"1.x", nullptr},
        {U"", nullptr},
    };

    TEST(AddressProductions, IPvFuture)
    {
        expectMatches(IPvFuture, futures);
    }

    constexpr Match literals[] = {
        {U"[::]", U"[::]"},
        {U"[::1]", U"[::1]"},
        {U"[::1]]", U"[::1]"},
        {U"[::1]:80", U"[::1]"},
        {U"[1:2:3:4:5:6:7:8]", U"[1:2:3:4:5:6:7:8]"},
        {U"[v1.x]", U"[v1.x]"},
        {U"[::1", nullptr},
        {U"::1]", nullptr},
        {U"[]", nullptr},
        {U"[", nullptr},
        {U"[ ::1]", nullptr},
        {U"[[::1]]", nullptr},
        {U"[1.2.3.4]", nullptr},
        {U"[::1v1.x]", nullptr},
        {U"[::1%25eth0]", nullptr},
        {U"[v1.x", nullptr},
        {U"[name]", nullptr},
        {U"", nullptr},
    };

    TEST(AddressProductions, IP_literal)
    {
        expectMatches(IP_literal, literals);
    }

    // "1:2:3" for a count of three.
    std::u32string groupsOf(int count)
    {
        std::u32string text;
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                text += U':';
            text += U"123456789a"[i];
        }
        return text;
    }

    // So many groups, of which a dotted quad at the end makes two.
    std::u32string groupsWithQuad(int count)
    {
        const std::u32string before = groupsOf(count - 2);
        return before + (before.empty() ? U"" : U":") + U"192.0.2.33";
    }

    bool isIPv6(const std::u32string& text)
    {
        return match(IPv6address, text) == text;
    }

    // RFC 3986, 3.2.2, first alternative: eight groups and no "::".
    TEST(AddressProductions, IPv6addressWithoutACompressionHasEightGroups)
    {
        for (int count = 1; count <= 10; ++count) {
            SCOPED_TRACE(count);
            EXPECT_EQ(isIPv6(groupsOf(count)), count == 8);
            if (count >= 2) {
                EXPECT_EQ(isIPv6(groupsWithQuad(count)), count == 8);
            }
        }
    }

    // RFC 3986, 3.2.2, the other eight alternatives: with so many groups behind the "::", at most
    // so many may stand before it. Together there are at most seven.
    struct Alternative {
        int number, groupsBehind, mostBefore;
    };
    constexpr Alternative alternatives[] = {
        {2, 7, 0}, {3, 6, 1}, {4, 5, 2}, {5, 4, 3}, {6, 3, 4}, {7, 2, 5}, {8, 1, 6}, {9, 0, 7},
    };

    TEST(AddressProductions, IPv6addressLimitsTheGroupsBeforeACompression)
    {
        for (const Alternative& row : alternatives) {
            for (int before = 0; before <= 9; ++before) {
                SCOPED_TRACE("alternative " + std::to_string(row.number) + " with "
                             + std::to_string(before) + " groups before");
                const std::u32string front = groupsOf(before) + U"::";
                EXPECT_EQ(isIPv6(front + groupsOf(row.groupsBehind)), before <= row.mostBefore);
                if (row.groupsBehind >= 2) {
                    EXPECT_EQ(isIPv6(front + groupsWithQuad(row.groupsBehind)),
                              before <= row.mostBefore);
                }
            }
        }
        EXPECT_FALSE(isIPv6(U"::" + groupsOf(8)));
    }

    constexpr Match addresses[] = {
        {U"::", U"::"},
        {U"1::", U"1::"},
        {U"::1", U"::1"},
        {U"ABCD:ef01:2345:6789:abcd:EF01:2345:6789", U"ABCD:ef01:2345:6789:abcd:EF01:2345:6789"},
        {U"0000::0", U"0000::0"},
        {U"::1.2.3.4", U"::1.2.3.4"},
        {U"::1:2:3.4.5.6", U"::1:2:3.4.5.6"},
        {U"::ffff:1.2.3.4", U"::ffff:1.2.3.4"},
        {U"1::2.3.4.5", U"1::2.3.4.5"},
        {U"\uFF11::\uFF46", U"\uFF11::\uFF46"},
        // what goes on behind an address is left over
        {U"::1]", U"::1"},
        {U"::1g", U"::1"},
        {U"::12345", U"::1234"},
        {U"1:2:3:4:5:6:7:8:9", U"1:2:3:4:5:6:7:8"},
        {U"1::2::3", U"1::2"},
        {U":::", U"::"},
        {U"::1:", U"::1"},
        {U"::1.2.3.4.5", U"::1.2.3.4"},
        {U"::256.2.3.4", U"::256"},
        {U"::01.2.3.4", U"::01"},
        {U"::1.2.3.4:5", U"::1.2.3.4"},
        {U"1:::2", U"1::"},
        {U"1:2:3:4:5:6:7::8", U"1:2:3:4:5:6:7::"},
        // no address at the front
        {U"", nullptr},
        {U":", nullptr},
        {U":1", nullptr},
        {U"1", nullptr},
        {U"1:", nullptr},
        {U"1:2:3:4:5:6:7", nullptr},
        {U"1:2:3:4:5:6:7:", nullptr},
        {U":1:2:3:4:5:6:7:8", nullptr},
        {U"1.2.3.4", nullptr},
        {U"1.2.3.4::", nullptr},
        {U"1:2.3.4.5::", nullptr},
        {U"12345::", nullptr},
        {U"g::", nullptr},
    };

    TEST(AddressProductions, IPv6address)
    {
        expectMatches(IPv6address, addresses);
    }

    // RFC 3986, 3.2.2 said in words: groups between single colons, eight of them, or at most seven
    // around one "::"; a dotted quad may stand for the last two.
    class NaiveIPv6 {
    public:
        static bool accepts(const std::u32string& text)
        {
            const auto compression = text.find(U"::");
            if (compression == text.npos)
                return count(text, true) == 8;
            const std::u32string before = text.substr(0, compression);
            const std::u32string behind = text.substr(compression + 2);
            const int first = before.empty() ? 0 : count(before, false);
            const int last = behind.empty() ? 0 : count(behind, true);
            return first != NONE && last != NONE && first + last <= 7;
        }

    private:
        static constexpr int NONE = 100;

        // How many groups a list of them has; NONE if it is no such list.
        static int count(const std::u32string& list, bool mayEndInQuad)
        {
            int groups = 0;
            std::size_t begin = 0;
            for (;;) {
                const auto colon = list.find(U':', begin);
                const std::u32string group = list.substr(begin, colon - begin);
                const bool isLast = colon == list.npos;
                if (group == U"1.2.3.4" && isLast && mayEndInQuad)
                    groups += 2;
                else if (!group.empty() && group.size() <= 4 && group.find(U'.') == group.npos)
                    groups += 1;
                else
                    return NONE;
                if (isLast)
                    return groups;
                begin = colon + 1;
            }
        }
    };

    // All texts over "f" and ":" up to 17 characters, which is two more than eight groups need.
    TEST(AddressProductions, IPv6addressAgreesWithANaiveReading)
    {
        int accepted = 0;
        for (std::size_t length = 0; length <= 17; ++length) {
            std::u32string text(length, U':');
            for (std::uint32_t bits = 0; bits < (std::uint32_t{1} << length); ++bits) {
                for (std::size_t i = 0; i < length; ++i)
                    text[i] = (bits >> i & 1U) != 0 ? U'f' : U':';
                ASSERT_EQ(isIPv6(text), NaiveIPv6::accepts(text)) << testing::PrintToString(text);
                const std::u32string withQuad = text + U"1.2.3.4";
                ASSERT_EQ(isIPv6(withQuad), NaiveIPv6::accepts(withQuad))
                    << testing::PrintToString(withQuad);
                accepted += NaiveIPv6::accepts(text) ? 1 : 0;
            }
        }
        EXPECT_GT(accepted, 1000);
    }

} // namespace
} // namespace foundation::network::iri::grammar
