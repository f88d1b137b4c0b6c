#include "Nearest.hpp"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace {

TEST(Nearest, CountsTypingErrors)
{
    struct {
        std::string_view left;
        std::string_view right;
        std::size_t errors;
    } constexpr CASES[] = {
        {"", "", 0},
        {"", "abc", 3},
        {"parse", "parse", 0},
        {"prase", "parse", 1},
        {"pars", "parse", 1},
        {"parrse", "parse", 1},
        {"perse", "parse", 1},
        {"parsee", "prse", 2},
        {"ab", "ba", 1},
        {"abc", "cab", 2},
        {"host", "path", 4},
        {"ca", "abc", 3},
        {"kitten", "sitting", 3},
    };
    for (const auto& [left, right, errors] : CASES) {
        EXPECT_EQ(tool::typingErrors(left, right), errors) << left << ' ' << right;
        EXPECT_EQ(tool::typingErrors(right, left), errors) << right << ' ' << left;
    }
}

TEST(Nearest, CountsEachOfSeveralErrorsOnceAtMost)
{
    const bool holds = rc::check(
        "one more error adds one at most", [](const std::string& left, std::string right) {
            const std::size_t before = tool::typingErrors(left, right);
            const auto place = *rc::gen::inRange<std::size_t>(0, right.size() + 1);
            right.insert(place, 1, *rc::gen::arbitrary<char>());
            const std::size_t after = tool::typingErrors(left, right);
            RC_ASSERT(after <= before + 1);
            RC_ASSERT(before <= after + 1);
        });
    EXPECT_TRUE(holds);
}

TEST(Nearest, SuggestsWhatIsTwoErrorsAwayAtMost)
{
    constexpr std::array<std::string_view, 5> NAMES{"parse", "get", "resolve", "map", "check"};
    const std::pair<std::string, std::string> CASES[] = {
        {"prase", "; did you mean parse?"},
        {"prsae", "; did you mean parse?"},
        {"resovle", "; did you mean resolve?"},
        {"gte", "; did you mean get?"},
        {"mpa", "; did you mean map?"},
        {"chekc", "; did you mean check?"},
        {"paarsee", "; did you mean parse?"},
        {"paaarsee", ""},
        {"xyz", ""},
        {"g", ""}, // "get" would be found in nearly anything that is so short
        {"", ""},
        {std::string(1000000, 'p'), ""},
    };
    for (const auto& [word, expected] : CASES)
        EXPECT_EQ(tool::suggestion(word, NAMES), expected) << word.substr(0, 20);
}

} // namespace
