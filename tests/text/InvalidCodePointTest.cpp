#include "text/InvalidCodePoint.hpp"

#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <locale>
#include <string>

namespace foundation::network::text {
namespace {

    TEST(InvalidCodePoint, isShownInLowerCaseWithAPrefixAndWithoutFilling)
    {
        EXPECT_EQ(toHexadecimal(0), "0"); // a stream writes no prefix before zero
        EXPECT_EQ(toHexadecimal(1), "0x1");
        EXPECT_EQ(toHexadecimal(0x41), "0x41");
        EXPECT_EQ(toHexadecimal(0xDC00), "0xdc00");
        EXPECT_EQ(toHexadecimal(0xFFFFFFFF), "0xffffffff");
    }

    TEST(InvalidCodePoint, isThrownWithItsWholeText)
    {
        const auto failure = tests::failureOf([] { throwInvalidCodePoint(0x110000); });
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->text, "Invalid UTF-32 code point U+0x110000 encountered while trying to "
                                 "encode UTF-16 sequence");
        EXPECT_EQ(failure->type, typeid(boost::wrapexcept<std::out_of_range>));
    }

    class ThousandsGrouped : public std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    TEST(InvalidCodePoint, isShownAlikeInEveryLocale)
    {
        const std::locale before =
            std::locale::global(std::locale(std::locale::classic(), new ThousandsGrouped));
        const std::string shown = toHexadecimal(0x110000);
        std::locale::global(before);
        EXPECT_EQ(shown, "0x110000");
    }

} // namespace
} // namespace foundation::network::text
