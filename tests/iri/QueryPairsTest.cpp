#include <foundation/network/iri/QueryPairs.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::iri {

namespace {

    using Separator = QueryPairs::Separator;

    static_assert(std::forward_iterator<QueryPairs::Iterator>);
    static_assert(std::ranges::forward_range<QueryPairs>);
    static_assert(std::ranges::borrowed_range<QueryPairs>);

    struct Expected {
        std::string key;
        std::string value;
        bool hasValue = true;
        bool isText = true;
    };

    struct Row {
        std::string_view query;
        Separator separator;
        std::vector<Expected> pairs;
    };

    const Row rows[] = {
        {"", Separator::Ampersand, {}},
        {"a=b", Separator::Ampersand, {{"a", "b"}}},
        {"a", Separator::Ampersand, {{"a", "", false}}},
        {"a=", Separator::Ampersand, {{"a", ""}}},
        {"=", Separator::Ampersand, {{"", ""}}},
        {"=b", Separator::Ampersand, {{"", "b"}}},
        {"a=b=c", Separator::Ampersand, {{"a", "b=c"}}},
        {"a=b&c=d", Separator::Ampersand, {{"a", "b"}, {"c", "d"}}},
        {"b=1&a=2&b=1", Separator::Ampersand, {{"b", "1"}, {"a", "2"}, {"b", "1"}}},
        {"&", Separator::Ampersand, {{"", "", false}, {"", "", false}}},
        {"a&&b&",
         Separator::Ampersand,
         {{"a", "", false}, {"", "", false}, {"b", "", false}, {"", "", false}}},

        // Only the separator that was asked for separates.
        {"a=b;c=d&e=f", Separator::Ampersand, {{"a", "b;c=d"}, {"e", "f"}}},
        {"a=b;c=d&e=f", Separator::Semicolon, {{"a", "b"}, {"c", "d&e=f"}}},
        {"a=b;c=d&e=f", Separator::Either, {{"a", "b"}, {"c", "d"}, {"e", "f"}}},

        // Escapes and "+" are undone, delimiters among them.
        {"a+b=c%20d", Separator::Ampersand, {{"a b", "c d"}}},
        {"a%2Bb=%3d%26%3B", Separator::Either, {{"a+b", "=&;"}}},
        {"%C3%A9=é", Separator::Ampersand, {{"é", "é"}}},
        {"%2541=%%41", Separator::Ampersand, {{"%41", "%A"}}}, // once, and no more
        {"a=%00b", Separator::Ampersand, {{"a", std::string("\0b", 2)}}},

        // A "%" that begins no escape stays.
        {"a%=%4&%zz=%4z", Separator::Ampersand, {{"a%", "%4"}, {"%zz", "%4z"}}},
        {"%=%", Separator::Ampersand, {{"%", "%"}}},
        {"%４１", Separator::Ampersand, {{"%４１", "", false}}},

        // Bytes that are no UTF-8 stay, too.
        {"a=%E9&b=c", Separator::Ampersand, {{"a", "\xE9", true, false}, {"b", "c"}}},
        {"%C3=%A9", Separator::Ampersand, {{"\xC3", "\xA9", true, false}}},
        {"%F8%90%80%80", Separator::Ampersand, {{"\xF8\x90\x80\x80", "", false, false}}},
        {"%ED%A0%80", Separator::Ampersand, {{"\xED\xA0\x80", "", false, false}}},
        {"\xFF=1", Separator::Ampersand, {{"\xFF", "1", true, false}}},
    };

    // The pairs of a text that is gone as soon as they were made do not compile.
    static_assert(std::is_constructible_v<QueryPairs, std::string&>);
    static_assert(std::is_constructible_v<QueryPairs, const char*>);
    static_assert(!std::is_constructible_v<QueryPairs, std::string>);
    static_assert(!std::is_constructible_v<QueryPairs, const std::string>);

} // namespace

TEST(QueryPairsReading, givesThePairsInOrder)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.query);
        const QueryPairs pairs(row.query, row.separator);
        EXPECT_EQ(std::ranges::distance(pairs), static_cast<std::ptrdiff_t>(row.pairs.size()));
        auto expected = row.pairs.begin();
        for (const QueryPair& pair : pairs) {
            ASSERT_NE(expected, row.pairs.end());
            EXPECT_EQ(pair.key, expected->key);
            EXPECT_EQ(pair.value, expected->value);
            EXPECT_EQ(pair.hasValue, expected->hasValue);
            EXPECT_EQ(pair.isText, expected->isText);
            ++expected;
        }
    }
}

TEST(QueryPairsReading, anAmpersandSeparatesUnlessSomethingElseIsSaid)
{
    EXPECT_EQ(std::ranges::distance(QueryPairs("a;b&c")), 2);
}

// What was written, put together again, is the query.
TEST(QueryPairsReading, showsWhatWasWritten)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.query);
        std::string_view rest = row.query;
        for (const QueryPair& pair : QueryPairs(row.query, row.separator)) {
            EXPECT_EQ(pair.writtenKey.data(), rest.data());
            EXPECT_EQ(pair.writtenValue.data(),
                      rest.data() + pair.writtenKey.size() + (pair.hasValue ? 1 : 0));
            rest.remove_prefix(pair.writtenKey.size() + (pair.hasValue ? 1 : 0)
                               + pair.writtenValue.size());
            if (!rest.empty())
                rest.remove_prefix(1);
        }
        EXPECT_EQ(rest, "");
    }
}

TEST(QueryPairsReading, iteratorsCanBeKept)
{
    const std::string query = "a=1&b=2";
    auto at = QueryPairs(query).begin();
    const auto first = at++;
    EXPECT_NE(first, at);
    EXPECT_EQ((*first).key, "a");
    EXPECT_EQ((*at).key, "b");
    EXPECT_EQ((*at).value, "2");
    EXPECT_EQ(first, QueryPairs(query).begin());
    EXPECT_EQ(++at, QueryPairs(query).end());
    EXPECT_EQ(QueryPairs::Iterator(), QueryPairs::Iterator());
    const auto found = std::ranges::find(QueryPairs(query), std::string("b"), &QueryPair::key);
    EXPECT_EQ((*found).value, "2");
}

} // namespace foundation::network::iri
