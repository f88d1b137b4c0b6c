#include "text/HexDigits.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

namespace foundation::network::text {
namespace {

    TEST(HexDigits, areThoseOfAscii)
    {
        constexpr std::u32string_view digits = U"0123456789abcdefABCDEF";
        for (char32_t c = 0; c <= 0x110000; ++c)
            ASSERT_EQ(isHexDigit(c), digits.find(c) != digits.npos)
                << static_cast<std::uint32_t>(c);
        EXPECT_FALSE(isHexDigit(0x80000041)); // its low byte alone is a digit
    }

    TEST(HexDigits, haveTheirValues)
    {
        for (unsigned value = 0; value < 16; ++value) {
            EXPECT_EQ(hexDigitValue(U"0123456789abcdef"[value]), value);
            EXPECT_EQ(hexDigitValue(U"0123456789ABCDEF"[value]), value);
            EXPECT_EQ(hexDigit(value), "0123456789ABCDEF"[value]);
        }
    }

} // namespace
} // namespace foundation::network::text
