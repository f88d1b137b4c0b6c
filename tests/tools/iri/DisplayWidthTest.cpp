#include "DisplayWidth.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>

namespace {

TEST(DisplayWidth, IsThatOfATerminal)
{
    struct {
        std::string_view text;
        std::size_t width;
    } constexpr CASES[] = {
        {"", 0},           {"abc ~", 5}, {"é", 1}, {"путь", 4}, {"e\u0301", 1}, // combining acute
        {"a\u20DD", 1},                                                         // enclosing circle
        {"\u200D", 0},                                                          // joiner
        {"漢字", 4},                                                            // wide
        {"ｆｕｌｌ", 8},                                                        // fullwidth
        {"ｶ", 1},                                                               // halfwidth
        {"\U00020000", 2}, // wide, outside the first plane
        {"\U0001F600", 2}, // emoji
        {"漢e\u0301x", 4},
    };
    for (const auto& [text, width] : CASES)
        EXPECT_EQ(tool::text::displayWidth(text), width) << text;
}

} // namespace
