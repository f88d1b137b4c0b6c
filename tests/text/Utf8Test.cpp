#include "text/Utf.hpp"

#include "text/Failure.hpp"
#include "text/NaiveUtf8.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace foundation::network::text {
namespace {

    using namespace std::string_literals;
    using tests::failureOf;
    using tests::invalidCodePoint;
    using tests::invalidUtf8;

    struct Reading {
        std::string utf8;
        std::u32string read;
    };

    const Reading readings[] = {
        {"", U""},
        {"a", U"a"},
        {"\0"s, U"\0"s}, // a zero inside the text is a character
        {"a\0b"s, U"a\0b"s},
        {"\x7F", U"\x7F"}, // the limits of each length
        {"\xC2\x80", U"\x80"},
        {"\xDF\xBF", U"\x7FF"},
        {"\xE0\xA0\x80", U"\x800"},
        {"\xEF\xBF\xBF", U"\xFFFF"},
        {"\xF0\x90\x80\x80", U"\U00010000"},
        {"\xF4\x8F\xBF\xBF", U"\U0010FFFF"},
        {"\xED\x9F\xBF", U"\xD7FF"}, // the neighbours of the surrogates
        {"\xEE\x80\x80", U"\xE000"},
        {"\xF0\x9F\x98\x80", U"\U0001F600"},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z", U"\u00E9\u20AC\U0001F600z"},
        {"\xF8\x90\x80\x80", U"\U00010000"}, // a lead from F8 up counts as one of four bytes
        {"\xF9\x80\x80\x80", U"\U00040000"},
        {"\xFB\xBF\xBF\xBF", U"\U000FFFFF"},
        {"\xFC\x80\x80\x80", U"\U00100000"},
        {"\xFC\x8F\xBF\xBF", U"\U0010FFFF"},
    };

    TEST(Utf8, isReadAsCodePoints)
    {
        for (const Reading& row : readings) {
            SCOPED_TRACE(testing::PrintToString(row.utf8));
            EXPECT_EQ(toUtf32(row.utf8), row.read);
            std::u32string result = U"what stood there before";
            EXPECT_TRUE(decodeUtf8(row.utf8, result));
            EXPECT_EQ(result, row.read);
        }
    }

    const std::string defects[] = {
        "\x80", // a continuation byte at a lead position
        "\xBF",
        "a\x80",
        "\xC3\xA9\xA9",
        "\xC3", // cut off at the end of the text
        "\xE2\x82",
        "\xE2",
        "\xF0\x9F\x98",
        "\xF0",
        "\xF8\x90\x80",
        "\xFF",
        "\xC3\0"s, // no continuation byte where one belongs
        "\xC3z",
        "\xE2z\x82",
        "\xE2\x82z",
        "\xF0z\x98\x80",
        "\xF0\x9Fz\x80",
        "\xF0\x9F\x98z",
        "\xC3\xC3\xA9",
        "\xC0\x80", // overlong
        "\xC1\xBF",
        "\xE0\x80\x80",
        "\xE0\x9F\xBF",
        "\xF0\x80\x80\x80",
        "\xF0\x8F\xBF\xBF",
        "\xF8\x88\x80\x80", // its value is 0x8000
        "\xED\xA0\x80",     // surrogates
        "\xED\xBF\xBF",
        "\xF4\x90\x80\x80", // above U+10FFFF
        "\xF7\xBF\xBF\xBF",
        "\xFC\x90\x80\x80",
        "\xFE\x80\x80\x80",
        "\xFF\xBF\xBF\xBF",
        "\xF8\x88\x80\x80\x80",     // five bytes, as UTF-8 once allowed
        "\xFC\x84\x80\x80\x80\x80", // six
    };

    TEST(Utf8, withADefectIsRefusedWithOneText)
    {
        for (const std::string& defect : defects) {
            SCOPED_TRACE(testing::PrintToString(defect));
            EXPECT_EQ(failureOf([&] { toUtf32(defect); }), invalidUtf8());
            std::u32string result;
            EXPECT_FALSE(decodeUtf8(defect, result));
        }
    }

    // F8 to FF are read for F0 to F7.
    TEST(Utf8, isGivenTheLeadBytesThatOthersWrite)
    {
        EXPECT_EQ(withUsualLeads(""), "");
        EXPECT_EQ(withUsualLeads("a\u00E4\u4F8B\U0001F600"), "a\u00E4\u4F8B\U0001F600");
        EXPECT_EQ(withUsualLeads("\xF8\x9F\x98\x80z\xFC\x8F\xBF\xBF"),
                  "\xF0\x9F\x98\x80z\xF4\x8F\xBF\xBF");
        for (const char* text : {"\xF8\x90\x80\x80", "\xF9\x90\x80\x80", "\xFC\x8F\xBF\xBF"})
            EXPECT_EQ(withUsualLeads(text), toUtf8(toUtf32(text)));
    }

    TEST(Utf8, isReadToTheEndOfTheViewOnly)
    {
        const std::string text = "\xC3\xA9\xC3\xA9";
        EXPECT_EQ(toUtf32(std::string_view(text).substr(0, 2)), U"\u00E9");
        EXPECT_EQ(failureOf([&] { toUtf32(std::string_view(text).substr(0, 3)); }), invalidUtf8());
        EXPECT_EQ(toUtf32(std::string_view()), U"");
    }

    // The reader takes ASCII in steps of several bytes; here each position of a step is met.
    TEST(Utf8, isReadAlikeAtEveryOffset)
    {
        for (std::size_t before = 0; before < 20; ++before) {
            for (std::size_t after = 0; after < 20; ++after) {
                SCOPED_TRACE(testing::Message() << before << " before, " << after << " after");
                const std::string front(before, 'f');
                const std::string back(after, 'b');
                const std::u32string wideFront(before, U'f');
                const std::u32string wideBack(after, U'b');
                EXPECT_EQ(toUtf32(front + "\xE2\x82\xAC" + back), wideFront + U"\u20AC" + wideBack);
                std::u32string result;
                EXPECT_FALSE(decodeUtf8(front + "\x80" + back, result));
                EXPECT_FALSE(decodeUtf8(front + "\xE2\x82" + back, result));
            }
        }
    }

    struct Writing {
        std::u32string text;
        std::string utf8;
    };

    const Writing writings[] = {
        {U"", ""},
        {U"a\0b"s, "a\0b"s},
        {U"\x7F", "\x7F"},
        {U"\x80", "\xC2\x80"},
        {U"\x7FF", "\xDF\xBF"},
        {U"\x800", "\xE0\xA0\x80"},
        {U"\xFFFF", "\xEF\xBF\xBF"},
        {U"\U00010000", "\xF0\x90\x80\x80"},
        {U"\U0001F600", "\xF0\x9F\x98\x80"},
        {U"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
        {{0xD800}, "\xED\xA0\x80"}, // no surrogate is refused here
        {{0xDBFF}, "\xED\xAF\xBF"},
        {{0xDC00}, "\xED\xB0\x80"},
        {{0xDFFF}, "\xED\xBF\xBF"},
        {{0xD83D, 0xDE00}, "\xED\xA0\xBD\xED\xB8\x80"}, // nor is a pair of them joined
    };

    TEST(Utf8, isWrittenFromCodePoints)
    {
        for (const Writing& row : writings) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            EXPECT_EQ(toUtf8(row.text), row.utf8);
        }
    }

    struct Excess {
        char32_t value;
        const char* shown;
    };

    constexpr Excess excesses[] = {
        {0x110000, "0x110000"},     {0x110001, "0x110001"},
        {0x7FFFFFFF, "0x7fffffff"}, {0xABCDEF01, "0xabcdef01"}, // lower-case digits
        {0xFFFFFFFF, "0xffffffff"},
    };

    TEST(Utf8, isNotWrittenForValuesAboveTheLastCodePoint)
    {
        for (const Excess& row : excesses) {
            SCOPED_TRACE(row.shown);
            const std::u32string inside = {U'a', row.value, U'b'};
            EXPECT_EQ(failureOf([&] { toUtf8({&row.value, 1}); }), invalidCodePoint(row.shown));
            EXPECT_EQ(failureOf([&] { toUtf8(inside); }), invalidCodePoint(row.shown));
            EXPECT_EQ(failureOf([&] { encodeUtf8(row.value); }), invalidCodePoint(row.shown));
        }
    }

    TEST(Utf8, failsAtTheFirstOfTwoBadValues)
    {
        const std::u32string text = {0x110005, 0x110000};
        EXPECT_EQ(failureOf([&] { toUtf8(text); }), invalidCodePoint("0x110005"));
    }

    TEST(Utf8, ofEveryCodePointReadsBack)
    {
        for (char32_t c = 0; c <= MAX_CODE_POINT; ++c) {
            const std::string expected = tests::writeUtf8(c);
            const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
            std::u32string read;
            ASSERT_EQ(toUtf8({&c, 1}), expected) << static_cast<std::uint32_t>(c);
            ASSERT_EQ(encodeUtf8(c).view(), expected) << static_cast<std::uint32_t>(c);
            ASSERT_EQ(decodeUtf8(expected, read), !surrogate) << static_cast<std::uint32_t>(c);
            if (!surrogate) {
                ASSERT_EQ(read, std::u32string(1, c)) << static_cast<std::uint32_t>(c);
            }
        }
    }

    TEST(Utf8, ofAllCodePointsInOneTextReadsBack)
    {
        std::u32string all;
        std::string bytes;
        for (char32_t c = 0; c <= MAX_CODE_POINT; ++c) {
            if (c >= 0xD800 && c <= 0xDFFF)
                continue;
            all.push_back(c);
            bytes += tests::writeUtf8(c);
        }
        EXPECT_TRUE(toUtf8(all) == bytes);
        EXPECT_TRUE(toUtf32(bytes) == all);
    }

} // namespace
} // namespace foundation::network::text
