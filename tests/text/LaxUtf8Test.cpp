#include "text/LaxUtf8.hpp"

#include "text/CodePointIterator.hpp"
#include "text/Fnv1a.hpp"
#include "text/Utf.hpp"

#include <boost/exception/all.hpp>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace foundation::network::text {
namespace {

    // The first and the last element of each length, and what lies beside them.
    const std::vector<char32_t> edges = {
        0x0,       0x1,       0x7F,       0x80,       0x7FF,      0x800,     0xD7FF,   0xD800,
        0xDFFF,    0xE000,    0xFFFF,     0x10000,    0x10FFFF,   0x110000,  0x1FFFFF, 0x200000,
        0x3FFFFFF, 0x4000000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};

    TEST(LaxUtf8, givesEachElementItsBytes)
    {
        const struct {
            char32_t element;
            std::string bytes;
        } rows[] = {
            {0x0, std::string(1, '\0')},
            {0x7F, "\x7F"},
            {0x80, "\xC2\x80"},
            {0x7FF, "\xDF\xBF"},
            {0x800, "\xE0\xA0\x80"},
            {0xD800, "\xED\xA0\x80"},
            {0xFFFF, "\xEF\xBF\xBF"},
            {0x10000, "\xF0\x90\x80\x80"},
            {0x10FFFF, "\xF4\x8F\xBF\xBF"},
            {0x110000, "\xF4\x90\x80\x80"},
            {0x1FFFFF, "\xF7\xBF\xBF\xBF"},
            {0x200000, "\xF8\x88\x80\x80\x80"},
            {0x3FFFFFF, "\xFB\xBF\xBF\xBF\xBF"},
            {0x4000000, "\xFC\x84\x80\x80\x80\x80"},
            {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"},
            {0x80000000, "\xFE\x82\x80\x80\x80\x80\x80"},
            {0xFFFFFFFF, "\xFE\x83\xBF\xBF\xBF\xBF\xBF"},
        };
        for (const auto& row : rows) {
            EXPECT_EQ(toLaxUtf8(std::u32string(1, row.element)), row.bytes);
            EXPECT_EQ(fromLaxUtf8(row.bytes), std::u32string(1, row.element));
        }
    }

    // Texts of elements of all lengths, with runs of ASCII.
    std::u32string anyText(std::mt19937& random)
    {
        std::u32string text;
        const std::size_t size = random() % 40;
        while (text.size() < size) {
            const char32_t edge = edges[random() % edges.size()];
            switch (random() % 4) {
            case 0:
                text.push_back(edge);
                break;
            case 1:
                text.push_back(static_cast<char32_t>(random()) >> (random() % 32));
                break;
            default:
                text.append(random() % 12, static_cast<char32_t>('a' + random() % 26));
            }
        }
        return text;
    }

    TEST(LaxUtf8, comesBackAndKeepsOrderAndHash)
    {
        std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same texts each time
        for (int i = 0; i < 20000; ++i) {
            const std::u32string one = anyText(random);
            const std::u32string two = anyText(random);
            const std::string laxOne = toLaxUtf8(one);
            const std::string laxTwo = toLaxUtf8(two);
            ASSERT_EQ(fromLaxUtf8(laxOne), one);
            const LaxUtf8View view(laxOne);
            ASSERT_EQ(std::u32string(view.begin(), view.end()), one);
            ASSERT_EQ(laxOne == laxTwo, one == two);
            ASSERT_EQ(laxOne < laxTwo, one < two);
            ASSERT_EQ(fnv1a(laxOne), fnv1a(one));
        }
    }

    TEST(LaxUtf8, isUtf8WhereTheTextIsUnicode)
    {
        for (char32_t c = 0; c <= MAX_CODE_POINT; ++c) {
            const std::u32string text(1, c);
            ASSERT_EQ(toLaxUtf8(text), toUtf8(text));
        }
    }

    TEST(LaxUtf8, tellsWhatIsBeyondUnicode)
    {
        for (const char32_t edge : edges) {
            for (const std::u32string before : {U"", U"abc", U"\U0010FFFF", U"\u00E4"}) {
                const std::string lax = toLaxUtf8(before + edge + U"z");
                EXPECT_EQ(exceedsUnicode(lax), edge > MAX_CODE_POINT) << std::uint32_t{edge};
            }
        }
    }

    TEST(LaxUtf8, becomesWhatTheStrictCrossingsMakeOfIt)
    {
        for (const char32_t edge : edges) {
            const std::u32string text = U"a\u00E4" + std::u32string(1, edge);
            const std::string lax = toLaxUtf8(text);
            if (edge > MAX_CODE_POINT) {
                EXPECT_THROW(static_cast<void>(laxToUtf8(lax)), std::out_of_range);
            } else {
                EXPECT_EQ(laxToUtf8(lax), toUtf8(text));
            }
            if (edge > MAX_CODE_POINT || isSurrogate(edge)) {
                EXPECT_THROW(static_cast<void>(laxToUtf16(lax)), std::out_of_range);
            } else {
                EXPECT_EQ(laxToUtf16(lax), toUtf16(text));
            }
        }
    }

} // namespace
} // namespace foundation::network::text
