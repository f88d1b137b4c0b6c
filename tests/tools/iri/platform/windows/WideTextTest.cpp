#include "platform/windows/WideText.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

struct Row {
    std::wstring wide;
    std::string utf8;
};

const Row rows[] = {
    {L"", ""},
    {L"a b", "a b"},
    {L"a\0b"s, "a\0b"s},
    {L"\u007F\u0080", "\x7F\xC2\x80"},
    {L"\u07FF\u0800", "\xDF\xBF\xE0\xA0\x80"},
    {L"\uFFFF", "\xEF\xBF\xBF"},
    {L"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
};

TEST(WideText, isUtf8AndBack)
{
    for (const Row& row : rows) {
        EXPECT_EQ(tool::system::toUtf8(row.wide), row.utf8);
        EXPECT_EQ(tool::system::toWide(row.utf8), row.wide);
    }
}

// So that it is refused where UTF-8 is asked for, and not taken for something else.
TEST(WideText, halfAPairOfSurrogatesIsNoUtf8)
{
    EXPECT_EQ(tool::system::toUtf8(L"\xD83C"), "\xED\xA0\xBC");
    EXPECT_EQ(tool::system::toUtf8(L"\xDF10\xD83C"), "\xED\xBC\x90\xED\xA0\xBC");
    EXPECT_EQ(tool::system::toUtf8(L"\xD83C\xD83C\xDF10"), "\xED\xA0\xBC\xF0\x9F\x8C\x90");
}

TEST(WideText, whatIsNoUtf8IsReplaced)
{
    EXPECT_EQ(tool::system::toWide("a\xFFz"), L"a\uFFFDz");
}

} // namespace
