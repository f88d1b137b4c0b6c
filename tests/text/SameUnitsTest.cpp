#include "text/SameUnits.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::network::text {
namespace {

    // Each length and each place of a unit, since several are looked at together; what stands beside
    // the text counts for nothing.
    template <class Unit>
    void expectExactLimit(char32_t powerOfTwo)
    {
        constexpr std::size_t LONGEST = 40;
        const auto last = static_cast<Unit>(powerOfTwo - 1);
        const auto first = static_cast<Unit>(powerOfTwo);
        for (std::size_t size = 0; size <= LONGEST; ++size) {
            std::basic_string<Unit> text(size + 2, last);
            text.front() = text.back() = first;
            const std::basic_string_view<Unit> view(text.data() + 1, size);
            EXPECT_TRUE(isAllBelow(powerOfTwo, view)) << size;
            for (std::size_t at = 1; at <= size; ++at) {
                text[at] = first;
                EXPECT_FALSE(isAllBelow(powerOfTwo, view)) << at << " of " << size;
                text[at] = static_cast<Unit>(-1);
                EXPECT_FALSE(isAllBelow(powerOfTwo, view)) << at << " of " << size;
                text[at] = last;
            }
        }
    }

    TEST(SameUnits, knowTheirLimit)
    {
        expectExactLimit<char>(0x80);
        expectExactLimit<char16_t>(0x80);
        expectExactLimit<char16_t>(0x8000);
        expectExactLimit<char32_t>(0x80);
        expectExactLimit<char32_t>(0x8000);
    }

    template <class To, class Unit>
    void expectSameNumbers()
    {
        for (std::size_t size = 0; size <= 70; ++size) {
            std::basic_string<Unit> text;
            To expected;
            for (std::size_t i = 0; i < size; ++i) {
                text.push_back(static_cast<Unit>(i + 1));
                expected.push_back(static_cast<typename To::value_type>(i + 1));
            }
            EXPECT_EQ(copyUnits<To>(std::basic_string_view<Unit>(text)), expected) << size;
        }
    }

    TEST(SameUnits, areCopiedAsTheNumbersThatTheyAre)
    {
        expectSameNumbers<std::u32string, char>();
        expectSameNumbers<std::u32string, char16_t>();
        expectSameNumbers<std::u16string, char32_t>();
        expectSameNumbers<std::string, char32_t>();
    }

} // namespace
} // namespace foundation::network::text
