#include "platform/linux/SystemText.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::platform {
namespace {

    struct Row {
        std::string bytes;
        std::u16string text;
    };

    const Row rows[] = {
        {"", u""},
        {"eth0", u"eth0"},
        {"\xC3\xA9th0", u"\u00E9th0"},
        {"\xE4\xBE\x8B", u"\u4F8B"},
        {"\xF0\x9F\x98\x80", u"\U0001F600"},
        // No UTF-8: each byte outside ASCII is replaced, and the whole text is read so.
        {"\xE9th0", u"\uFFFDth0"},
        {"a\xFF", u"a\uFFFD"},
        {"\xC3", u"\uFFFD"},
        {"\xC3\xA9\xFF", u"\uFFFD\uFFFD\uFFFD"},
    };

    TEST(SystemText, isUtf8OrElseAscii)
    {
        for (const Row& row : rows) {
            SCOPED_TRACE(testing::PrintToString(row.bytes));
            EXPECT_EQ(fromSystemText(row.bytes), row.text);
        }
    }

} // namespace
} // namespace foundation::network::platform
