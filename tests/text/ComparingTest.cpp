#include "text/Comparing.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace foundation::network::text {
namespace {

    // Two texts of each length that differ in one character, at each place, by each relation.
    TEST(Comparing, findsADifferenceAtEachPlace)
    {
        for (std::size_t size = 0; size < 40; ++size) {
            const std::u32string text(size, U'm');
            EXPECT_TRUE(areEqual(text, text));
            EXPECT_FALSE(isLess(text, text));
            EXPECT_EQ(findDifference(text.data(), text.data(), size), size);
            for (std::size_t place = 0; place < size; ++place) {
                for (const char32_t c : {U'a', U'l', U'z', U'\U0010FFFF'}) {
                    std::u32string other = text;
                    other[place] = c;
                    EXPECT_FALSE(areEqual(text, other));
                    EXPECT_EQ(findDifference(text.data(), other.data(), size), place);
                    EXPECT_EQ(isLess(text, other), text < other);
                    EXPECT_EQ(isLess(other, text), other < text);
                }
            }
        }
    }

    TEST(Comparing, aBeginningComesFirst)
    {
        const std::u32string text(30, U'm');
        for (std::size_t size = 0; size < text.size(); ++size) {
            const std::u32string beginning = text.substr(0, size);
            EXPECT_FALSE(areEqual(text, beginning));
            EXPECT_TRUE(isLess(beginning, text));
            EXPECT_FALSE(isLess(text, beginning));
        }
    }

    // By code points, not by bytes in memory.
    TEST(Comparing, ordersByCodePoint)
    {
        EXPECT_TRUE(isLess(U"\u00FF", U"\u0100"));
        EXPECT_TRUE(isLess(U"\uFFFF", U"\U00010000"));
        EXPECT_FALSE(isLess(U"\u0100", U"\u00FF"));
    }

} // namespace
} // namespace foundation::network::text
