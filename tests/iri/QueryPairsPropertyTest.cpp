#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include "iri/NaiveIri.hpp"
#include "iri/NaiveQuery.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;
    using iri::QueryPairs;
    using Pairs = std::vector<std::pair<std::string, std::string>>;

    rc::Gen<std::string> joined(std::size_t least, const std::vector<std::string>& pieces)
    {
        return rc::gen::exec([least, pieces] {
            std::string result;
            const auto count = *rc::gen::inRange<std::size_t>(least, 7);
            for (std::size_t i = 0; i < count; ++i)
                result += *rc::gen::elementOf(pieces);
            return result;
        });
    }

    // Anything may stand beside anything but for an escape.
    const std::vector<std::string> plainPieces{"g",      "z",
                                               " ",      "+",
                                               "&",      ";",
                                               "=",      "%",
                                               "/",      "?",
                                               "#",      "[",
                                               "]",      "\"",
                                               "<",      "é",
                                               "例",     "😀",
                                               "\u0080", "\uE000",
                                               "\uFDD0", "\U000E0001",
                                               "\uFF11", "\t",
                                               "\n",     std::string(1, '\0')};

    std::vector<std::string> piecesWithEscapes()
    {
        std::vector<std::string> result = plainPieces;
        for (const char* piece : {"%41", "%2B", "%26", "%25", "%C3%A9", "%E9", "4", "1", "B", "a"})
            result.emplace_back(piece);
        return result;
    }

    Pairs read(const std::string& query, QueryPairs::Separator separator)
    {
        Pairs result;
        for (const iri::QueryPair& pair : QueryPairs(query, separator)) {
            RC_ASSERT(pair.hasValue);
            result.emplace_back(pair.key, pair.value);
        }
        return result;
    }

    // What the builder was told, and what must come back.
    struct Appended {
        Pairs pairs;
        bool isLastFormEncoded = false;
        bool hasEscapes = false;
        bool semicolonSeparator = false;
        IRIArgs args;

        QueryPairs::Separator separator() const
        {
            return semicolonSeparator ? QueryPairs::Separator::Semicolon
                                      : QueryPairs::Separator::Ampersand;
        }
    };

    Appended append(const std::vector<std::string>& pieces)
    {
        Appended result;
        result.semicolonSeparator = *rc::gen::arbitrary<bool>();
        const auto count = *rc::gen::inRange<std::size_t>(1, 6);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string key = *joined(1, pieces);
            const std::string value = *joined(0, pieces);
            result.isLastFormEncoded = *rc::gen::arbitrary<bool>();
            if (*rc::gen::arbitrary<bool>())
                result.args.appendQueryKeyValuePair(key, value, result.isLastFormEncoded,
                                                    result.semicolonSeparator);
            else
                result.args.appendQueryKeyValuePair(
                    utf16(key), utf16(value), result.isLastFormEncoded, result.semicolonSeparator);
            result.pairs.emplace_back(key, value);
            for (const std::string& text : {key, value})
                result.hasEscapes =
                    result.hasEscapes
                    || text.find_first_of(result.semicolonSeparator ? ";=+" : "&=+") != text.npos;
        }
        return result;
    }

} // namespace

RC_GTEST_PROP(QueryPairsProperty, whatWasAppendedComesBack, ())
{
    const Appended appended = append(plainPieces);
    const IRI built(appended.args);
    RC_ASSERT(read(built.getQueryUtf8(), appended.separator()) == appended.pairs);
    RC_ASSERT(read(built.getQueryUtf8(IRI::Encoding::Ascii), appended.separator())
              == appended.pairs);
    // From a text as well. It is the strict one: the plain one may show what does not parse.
    const IRI parsed(IRI(appended.args).toStringUtf8(true));
    RC_ASSERT(read(parsed.getQueryUtf8(), appended.separator()) == appended.pairs);
}

// As the builder tells: it keeps escapes if the query is form-encoded or it had to write some, and
// takes them for plain text otherwise.
RC_GTEST_PROP(QueryPairsProperty, escapesThatTheBuilderKeptAreUndone, ())
{
    const Appended appended = append(piecesWithEscapes());
    Pairs expected = appended.pairs;
    if (appended.isLastFormEncoded || appended.hasEscapes)
        for (auto& [key, value] : expected) {
            key = unescaped(key);
            value = unescaped(value);
        }
    RC_ASSERT(read(IRI(appended.args).getQueryUtf8(), appended.separator()) == expected);
}

} // namespace foundation::network
