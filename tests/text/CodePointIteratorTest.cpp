#include "text/CodePointIterator.hpp"

#include "text/Utf.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::text {

namespace {

    // What a walk over the text shows up to its end or its first defect.
    template <class Unit>
    std::u32string walk(std::basic_string_view<Unit> text)
    {
        std::u32string result;
        if (endsInsideSequence(text))
            return U"ends inside";
        CodePointIterator<Unit> at(text.data());
        for (const CodePointIterator<Unit> last(text.data() + text.size()); at != last; ++at) {
            result.push_back(*at);
            if (*at == NO_CODE_POINT)
                break;
        }
        return result;
    }

    const std::u32string defect(1, NO_CODE_POINT);

} // namespace

TEST(CodePointIterator, walksOverUtf8)
{
    struct Row {
        std::string_view text;
        std::u32string points;
    };
    const Row rows[] = {
        {"", U""},
        {"a\x7F", U"a\x7F"},
        {"aé例😀b", U"aé例😀b"},
        {"\xF4\x8F\xBF\xBF", U"\U0010FFFF"},
        {"\xF8\x90\x80\x80", U"\U00010000"}, // as the leads from F8 up are read
        {"\xFF\x80\x80\x80x", defect},       // 1C0000
        {"\x80", defect},
        {"a\xBFz", U"a" + defect},
        {"\xC0\x80", defect},
        {"\xC3(", defect},
        {"\xED\xA0\x80", defect},
        {"\xF4\x90\x80\x80", defect},
        {"\xF8\x88\x80\x80", defect},
        {"\xC3", U"ends inside"},
        {"é\xC3", U"ends inside"},
        {"\xE2\x82", U"ends inside"},
        {"abc\xF0\x9F\x98", U"ends inside"},
        {"\xFF\x80\x80", U"ends inside"},
        {"\xF0", U"ends inside"},
        {"\xE2\x82\xAC", U"€"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        EXPECT_EQ(walk(row.text), row.points);
    }
}

// A constant expression that reads past an array does not compile.
TEST(CodePointIterator, readsNothingBehindTheText)
{
    static constexpr char continuation[] = {'\x80'};
    static constexpr char lastContinuation[] = {'\xBF'};
    static constexpr char16_t low[] = {0xDC00};
    static constexpr char16_t lastLow[] = {0xDFFF};
    static_assert(codePointAt(continuation) == NO_CODE_POINT);
    static_assert(codePointAt(lastContinuation) == NO_CODE_POINT);
    static_assert(codePointAt(low) == NO_CODE_POINT);
    static_assert(codePointAt(lastLow) == NO_CODE_POINT);

    for (int byte = 0; byte < 0x100; ++byte) {
        // Behind the end of the view stands what would go on.
        const char text[] = {static_cast<char>(byte), '\x90', '\x80', '\x80'};
        const std::string_view one(text, 1);
        const std::u32string expected = byte < 0x80 ? std::u32string(1, static_cast<char32_t>(byte))
                                        : byte < 0xC0 ? defect
                                                      : U"ends inside";
        EXPECT_EQ(walk(one), expected) << byte;
    }
}

TEST(CodePointIterator, walksOverUtf16)
{
    struct Row {
        std::u16string text;
        std::u32string points;
    };
    const Row rows[] = {
        {u"", U""},
        {u"aé例😀b", U"aé例😀b"},
        {{0xDBFF, 0xDFFF}, U"\U0010FFFF"},
        {{u'a', 0xDC00}, U"a" + defect},
        {{0xD800, u'a'}, defect},
        {{0xD800, 0xD800, 0xDC00}, defect},
        {{u'a', 0xD800}, U"ends inside"},
        {{0xDC00, 0xDBFF}, U"ends inside"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        EXPECT_EQ(walk(std::u16string_view(row.text)), row.points);
    }
}

// Every sequence of two and three bytes, and those of four that begin near a border.
TEST(CodePointIterator, takesWhatTheDecoderTakes)
{
    const auto expectSame = [](const std::string& text) {
        std::u32string decoded;
        const bool isValid = decodeUtf8(text, decoded);
        const std::u32string walked = walk(std::string_view(text));
        const bool isWalked = walked != U"ends inside" && walked.find(NO_CODE_POINT) == walked.npos;
        EXPECT_EQ(isWalked, isValid) << testing::PrintToString(text);
        if (isValid) {
            EXPECT_EQ(walked, decoded);
        }
    };
    const auto byte = [](unsigned value) { return static_cast<char>(value); };
    for (unsigned first = 0; first < 0x100; ++first)
        for (unsigned second = 0; second < 0x100; ++second) {
            expectSame({byte(first), byte(second)});
            for (const unsigned third : {0x00U, 0x7FU, 0x80U, 0x9FU, 0xA0U, 0xBFU, 0xC0U, 0xFFU}) {
                expectSame({byte(first), byte(second), byte(third)});
                if (first >= 0xE0)
                    for (const unsigned fourth : {0x7FU, 0x80U, 0xBFU, 0xC0U})
                        expectSame({byte(first), byte(second), byte(third), byte(fourth)});
            }
        }
}

TEST(CodePointIterator, knowsAsciiTexts)
{
    for (std::size_t length = 0; length < 40; ++length) {
        std::string text(length, 'a');
        EXPECT_TRUE(isAllAscii(text));
        for (char& c : text) {
            c = '\x80';
            EXPECT_FALSE(isAllAscii(text)) << length;
            c = '\x7F';
        }
        EXPECT_TRUE(isAllAscii(text));
    }
    const std::string text = "aé\x7F";
    std::u32string walked;
    for (AsciiIterator at(text.data()); at != AsciiIterator(text.data() + 1); at++)
        walked.push_back(*at);
    EXPECT_EQ(walked, U"a");
}

} // namespace foundation::network::text
