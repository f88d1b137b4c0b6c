// A letter that chooses the separator, and a query: its pairs, as they were written, put together
// again give the query, and they read as their escapes say. What a bag appends comes back.

#include "Target.hpp"

#include "build/NaiveText.hpp"
#include "iri/NaiveQuery.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include <algorithm>
#include <string>
#include <string_view>

namespace foundation::network::fuzz {

namespace {

    using iri::QueryPair;
    using iri::QueryPairs;

    constexpr QueryPairs::Separator separators[] = {QueryPairs::Separator::Ampersand,
                                                    QueryPairs::Separator::Semicolon,
                                                    QueryPairs::Separator::Either};
    constexpr std::string_view separatorTexts[] = {"&", ";", "&;"};

    std::string read(std::string_view written)
    {
        std::string text(written);
        std::ranges::replace(text, '+', ' ');
        return tests::unescaped(text);
    }

    // Whether it is the UTF-8 that everybody writes, without the lead bytes from F8 up that the
    // library reads besides.
    bool isText(const std::string& bytes)
    {
        const auto read = tests::readUtf8(bytes);
        return read && tests::toUtf8(*read) == bytes;
    }

    void requirePairs(const std::string& query, unsigned choice)
    {
        const QueryPairs pairs(query, separators[choice]);
        std::string again;
        for (auto at = pairs.begin(); at != pairs.end(); ++at) {
            const QueryPair pair = *at;
            require(pair == *at, "a pair is read alike each time");
            if (at != pairs.begin()) {
                require(again.size() < query.size(), "the pairs lie within the query");
                again += query[again.size()];
                require(separatorTexts[choice].find(again.back()) != std::string_view::npos,
                        "a separator stands between pairs");
            }
            again.append(pair.writtenKey)
                .append(pair.hasValue ? "=" : "")
                .append(pair.writtenValue);
            require(pair.key == read(pair.writtenKey) && pair.value == read(pair.writtenValue),
                    "a pair reads as it was written");
            require(pair.hasValue || pair.value.empty(), "what is absent is empty");
            for (const std::string_view written : {pair.writtenKey, pair.writtenValue})
                require(written.find_first_of(separatorTexts[choice]) == written.npos,
                        "no separator is left in a pair");
            require(pair.writtenKey.find('=') == std::string_view::npos,
                    "the first equals sign ends the key");
            require(pair.isText == (isText(pair.key) && isText(pair.value)),
                    "what is no UTF-8 is told");
        }
        require(again == query, "the pairs are the whole query");
    }

    // Escapes that are there already are undone, and sequences with a lead byte from F8 up become
    // what they are read as.
    bool mayComeBack(const std::string& text)
    {
        return isText(text) && text.find('%') == text.npos;
    }

    void requireComesBack(const std::string& key, const std::string& value, unsigned choice)
    {
        if (key.empty() || !mayComeBack(key) || !mayComeBack(value))
            return;
        IRIArgs args;
        args.appendQueryKeyValuePair(key, value, true, choice == 1);
        const std::string query = IRI(args).getQueryUtf8();
        const QueryPairs pairs(query, separators[choice == 1 ? 1 : 0]);
        require(std::ranges::distance(pairs) == 1, "one pair comes back");
        const QueryPair pair = *pairs.begin();
        require(pair.key == key && pair.value == value && pair.isText, "it is the one appended");
    }

} // namespace

void run(Input input)
{
    const unsigned choice = input.byte() % 3U;
    const std::string query = input.rest();
    requirePairs(query, choice);
    requireComesBack(query.substr(0, query.size() / 2), query.substr(query.size() / 2), choice);
}

} // namespace foundation::network::fuzz
