#include "Tsv.hpp"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <utility>

namespace {

std::string escaped(const std::string& text)
{
    std::string result;
    tool::appendTsv(result, text);
    return result;
}

TEST(Tsv, EscapesWhatSeparates)
{
    const std::pair<std::string, std::string> CASES[] = {
        {"", ""},
        {"a b", "a b"},
        {"a\tb", R"(a\tb)"},
        {"a\nb\n", R"(a\nb\n)"},
        {"\\", R"(\\)"},
        {"\\N", R"(\\N)"},
        {"\\t", R"(\\t)"},
        {"\r", "\r"},
        {"\\\t", R"(\\\t)"},
        {std::string(1, '\0'), std::string(1, '\0')},
    };
    for (const auto& [text, expected] : CASES)
        EXPECT_EQ(escaped(text), expected);
}

TEST(Tsv, LeavesEscapesThatItDoesNotKnow)
{
    const std::pair<std::string, std::string> CASES[] = {
        {R"(\N)", R"(\N)"},  {R"(a\)", R"(a\)"},  {R"(\x41)", R"(\x41)"},
        {R"(\\t)", R"(\t)"}, {R"(\\\t)", "\\\t"},
    };
    for (const auto& [text, expected] : CASES)
        EXPECT_EQ(tool::undoTsv(text), expected);
}

TEST(Tsv, IsUndone)
{
    const bool holds = rc::check("what was escaped can be had again", [] {
        const auto text = *rc::gen::container<std::string>(
            rc::gen::element('a', '\\', '\t', '\n', 'N', 't', 'n', '\0', '\xFF'));
        const std::string line = escaped(text);
        RC_ASSERT(tool::undoTsv(line) == text);
        RC_ASSERT(line.find_first_of("\t\n") == std::string::npos);
        RC_ASSERT(line != tool::TSV_ABSENT);
    });
    EXPECT_TRUE(holds);
}

} // namespace
