#include "platform/StrictIPv4.hpp"

#include "platform/SystemAnswers.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::platform {
namespace {

    struct Row {
        const char* text;
        bool isStrict;
    };

    const Row rows[] = {
        {"0.0.0.0", true},     {"1.2.3.4", true},
        {"127.0.0.1", true},   {"255.255.255.255", true},
        {"", false},           {" ", false},
        {"127", false},        {"127.1", false},
        {"127.0.1", false},    {"1.2.3.4.5", false},
        {"1.2.3.", false},     {"1.2.3.4.", false},
        {".1.2.3.4", false},   {"1..3.4", false},
        {"...", false},        {"2130706433", false},
        {"0x7f.0.0.1", false}, {"127.0.0.0x1", false},
        {"0x7f000001", false}, {"01.2.3.4", false}, // octal elsewhere
        {"1.2.3.04", false},   {"00.0.0.0", false},
        {"1.2.3.256", false},  {"256.2.3.4", false},
        {"1.2.3.1000", false}, {"4294967297.0.0.1", false}, // 2^32 + 1
        {"-1.2.3.4", false},   {"+1.2.3.4", false},
        {" 1.2.3.4", false},   {"1,2,3,4", false},
        {"a.b.c.d", false},    {"::1", false},
        {"127.1:80", false},   {"01.2.3.4:80", false},
        {"127.1x", false},     {"::ffff:1.2.3.4", false},
    };

    TEST(StrictIPv4, isFourDecimalParts)
    {
        for (const Row& row : rows)
            EXPECT_EQ(isStrictIPv4(row.text), row.isStrict) << '"' << row.text << '"';
    }

    // Where the check stops behind the four parts, the parser has refused most of these before.
    TEST(StrictIPv4, readsTheRestWhereTheSystemDoes)
    {
        for (const char* text :
             {"1.2.3.4 ", "1.2.3.4\n", "1.2.3.4x", "1.2.3.4:80", "1.2.3.4/24", "1.2.3.4%5"})
            EXPECT_EQ(isStrictIPv4(text), !tests::isRestChecked()) << '"' << text << '"';
    }

    // Every number in each of the four places.
    TEST(StrictIPv4, takesNumbersUpTo255)
    {
        for (unsigned number = 0; number <= 1100; ++number) {
            const std::string text = std::to_string(number);
            const bool expected = number <= 255;
            ASSERT_EQ(isStrictIPv4((text + ".1.1.1").c_str()), expected) << text;
            ASSERT_EQ(isStrictIPv4(("1." + text + ".1.1").c_str()), expected) << text;
            ASSERT_EQ(isStrictIPv4(("1.1." + text + ".1").c_str()), expected) << text;
            ASSERT_EQ(isStrictIPv4(("1.1.1." + text).c_str()), expected) << text;
        }
    }

} // namespace
} // namespace foundation::network::platform
