#include "text/Ascii.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::text {
namespace {

    TEST(Ascii, ofEveryUnitIsItselfOrAQuestionMark)
    {
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            const std::u16string text(1, static_cast<char16_t>(unit));
            const char expected = unit <= 0x7F ? static_cast<char>(unit) : '?';
            ASSERT_EQ(toAscii(text), std::string(1, expected)) << unit;
        }
    }

    TEST(Ascii, ofEveryByteIsReadAsItselfOrAsAReplacementCharacter)
    {
        for (unsigned byte = 0; byte <= 0xFF; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            const char16_t expected = byte <= 0x7F ? static_cast<char16_t>(byte) : u'\uFFFD';
            ASSERT_EQ(fromAscii(text), std::u16string(1, expected)) << byte;
        }
    }

    TEST(Ascii, keepsLengthOrderAndZeros)
    {
        using namespace std::string_literals;
        EXPECT_EQ(toAscii(u""), "");
        EXPECT_EQ(fromAscii(""), u"");
        EXPECT_EQ(toAscii(u"a\0b\u00E9c"s), "a\0b?c"s);
        EXPECT_EQ(fromAscii("a\0b\xE9"
                            "c"s),
                  u"a\0b\uFFFDc"s);
        // A character outside the basic plane is two units, each without a counterpart.
        EXPECT_EQ(toAscii(u"\U0001F600"), "??");
        EXPECT_EQ(fromAscii("\xC3\xA9"), u"\uFFFD\uFFFD");
    }

} // namespace
} // namespace foundation::network::text
