#include "text/Comparing.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>

namespace foundation::network::text {
namespace {

    // Two texts of each length that differ in one character, at each place, by each relation.
    TEST(Comparing, findsADifferenceAtEachPlace)
    {
        for (std::size_t size = 0; size < 40; ++size) {
            const std::string text(size, 'm');
            EXPECT_TRUE(areEqual(text, text));
            EXPECT_FALSE(isLess(text, text));
            EXPECT_EQ(findDifference(text.data(), text.data(), size), size);
            for (std::size_t place = 0; place < size; ++place) {
                for (const char c : {'a', 'l', 'z', '\xF4'}) {
                    std::string other = text;
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
        const std::string text(30, 'm');
        for (std::size_t size = 0; size < text.size(); ++size) {
            const std::string beginning = text.substr(0, size);
            EXPECT_FALSE(areEqual(text, beginning));
            EXPECT_TRUE(isLess(beginning, text));
            EXPECT_FALSE(isLess(text, beginning));
        }
    }

    TEST(Comparing, ordersByCodePoint)
    {
        const std::array texts = {"",       "a",      "\u007F", "\u0080",     "\u00FF",    "\u0100",
                                  "\uD7FF", "\uE000", "\uFFFF", "\U00010000", "\U0010FFFF"};
        for (std::size_t i = 0; i < texts.size(); ++i)
            for (std::size_t j = 0; j < texts.size(); ++j)
                EXPECT_EQ(isLess(texts[i], texts[j]), i < j);
    }

} // namespace
} // namespace foundation::network::text
