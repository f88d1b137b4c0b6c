#include "platform/windows/WideText.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::platform {
namespace {

    using namespace std::string_literals;

    struct Row {
        std::wstring wide;
        std::u16string text;
    };

    const Row rows[] = {
        {L"", u""},
        {L"Ethernet 2", u"Ethernet 2"},
        {L"b\u00FCro", u"b\u00FCro"},
        {L"a\0b"s, u"a\0b"s},
        {L"\uFFFF", u"\uFFFF"},
        {L"\U0001F310", u"\U0001F310"},
        {L"\U0010FFFF\U00010000", u"\U0010FFFF\U00010000"},
        // Halves of pairs, which the system takes for text as well.
        {L"\xD83C", u"\uFFFD"},
        {L"\xDF10", u"\uFFFD"},
        {L"a\xD83C", u"a\uFFFD"},
        {L"\xD83C"
         L"b",
         u"\uFFFDb"},
        {L"\xDF10\xD83C", u"\uFFFD\uFFFD"},
        {L"\xD83C\xD83C\xDF10", u"\uFFFD\U0001F310"},
        {L"\xD83C\xDF10\xDF10", u"\U0001F310\uFFFD"},
    };

    TEST(WideText, isUtf16)
    {
        for (const Row& row : rows)
            EXPECT_EQ(fromWideText(row.wide), row.text) << testing::PrintToString(row.wide);
    }

    // Every unit alone: those of no pair are themselves.
    TEST(WideText, keepsEachUnitThatIsNoSurrogate)
    {
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
            const std::wstring wide(1, static_cast<wchar_t>(unit));
            const std::u16string text(1, isSurrogate ? u'\uFFFD' : static_cast<char16_t>(unit));
            ASSERT_EQ(fromWideText(wide), text) << unit;
        }
    }

} // namespace
} // namespace foundation::network::platform
