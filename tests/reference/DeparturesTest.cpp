#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "reference/NormalForm.hpp"
#include "reference/ResolutionRows.hpp"
#include "reference/StrictResolver.hpp"
#include "text/NaiveUtf8.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    // A row of the page, each cell under the name that stands above it.
    using PageRow = std::map<std::string, std::string>;

    std::string trimmed(const std::string& text)
    {
        const std::size_t first = text.find_first_not_of(' ');
        if (first == std::string::npos)
            return {};
        return text.substr(first, text.find_last_not_of(' ') - first + 1);
    }

    std::vector<std::string> cells(const std::string& line)
    {
        std::vector<std::string> result;
        std::istringstream rest(line.substr(1));
        for (std::string cell; std::getline(rest, cell, '|');)
            result.push_back(trimmed(cell));
        return result;
    }

    std::vector<PageRow> rowsOfThePage()
    {
        std::ifstream page(ZKFLNETWORK_DEPARTURES_PAGE);
        std::vector<PageRow> result;
        std::vector<std::string> head;
        for (std::string line; std::getline(page, line);) {
            if (line.rfind('|', 0) != 0) {
                head.clear();
            } else if (head.empty()) {
                head = cells(line);
            } else if (head.front() == "Call" && line.find("|---") != 0) {
                const std::vector<std::string> row = cells(line);
                if (row.size() != head.size())
                    throw std::runtime_error("a row of another length: " + line);
                for (std::size_t i = 0; i < row.size(); ++i)
                    (i == 0 ? result.emplace_back() : result.back())[head[i]] = row[i];
            }
        }
        return result;
    }

    bool isLiteral(const std::string& cell)
    {
        return cell.size() >= 2 && cell.front() == '`' && cell.back() == '`'
               && cell.find('`', 1) == cell.size() - 1;
    }

    // The text that a cell means: a literal's own, or the words that stand there.
    std::string meaning(const std::string& cell)
    {
        if (!isLiteral(cell))
            return cell;
        std::string text = cell.substr(1, cell.size() - 2);
        if (text == "\"\"")
            return {};
        for (std::size_t at = text.find("\\u{"); at != std::string::npos; at = text.find("\\u{")) {
            const std::size_t end = text.find('}', at);
            const auto number = std::stoul(text.substr(at + 3, end - at - 3), nullptr, 16);
            text.replace(at, end - at + 1, writeUtf8(static_cast<char32_t>(number)));
        }
        return text;
    }

    IRI built(const std::string& components)
    {
        using Set = IRIArgs& (IRIArgs::*)(const std::string&);
        const std::map<std::string, Set> setters = {
            {"scheme", &IRIArgs::setScheme}, {"user-info", &IRIArgs::setUserInfo},
            {"host", &IRIArgs::setHost},     {"path", &IRIArgs::setPath},
            {"query", &IRIArgs::setQuery},   {"fragment", &IRIArgs::setFragment},
        };
        IRIArgs args;
        std::istringstream rest(components);
        for (std::string component; rest >> component;) {
            const std::size_t equals = component.find('=');
            const std::string name = component.substr(0, equals);
            const std::string value = component.substr(equals + 1);
            if (name == "pair") {
                const std::size_t colon = value.find(':');
                args.appendQueryKeyValuePair(value.substr(0, colon), value.substr(colon + 1), true,
                                             false);
            } else {
                (args.*setters.at(name))(value);
            }
        }
        return IRI(args);
    }

    IRI valueOf(const std::string& text)
    {
        const std::string against = " against ";
        if (const std::size_t at = text.find(against); at != std::string::npos) {
            const IRI reference = valueOf(meaning('`' + text.substr(0, at) + '`'));
            return reference.resolveAgainst(valueOf(text.substr(at + against.size())));
        }
        const std::string build = "build ";
        return text.rfind(build, 0) == 0 ? built(text.substr(build.size())) : IRI(text);
    }

    // What the page calls the text that is put together from the readers.
    std::string fromItsParts(const IRI& iri)
    {
        return (iri.hasScheme() ? iri.getSchemeUtf8() + ':' : "") + iri.getSchemeSpecificPartUtf8()
               + (iri.hasFragment() ? '#' + iri.getFragmentUtf8() : "");
    }

    IRI rebuiltWithPair(const std::string& text, const std::string& pair, bool formEncoded)
    {
        IRIArgs args(valueOf(text));
        const std::size_t equals = pair.find('=');
        args.appendQueryKeyValuePair(pair.substr(0, equals), pair.substr(equals + 1), formEncoded,
                                     false);
        return IRI(args);
    }

    IRI rebuiltInto(const std::string& text, const std::string& used)
    {
        IRIArgs args(valueOf(used));
        valueOf(text).toArgs(args);
        return IRI(args);
    }

    IRI resolvedAfter(const std::string& reference, const std::string& base, bool strict)
    {
        const IRI asked = valueOf(base);
        asked.toStringUtf8(strict);
        return valueOf(reference).resolveAgainst(asked);
    }

    bool isIri(const std::string& text)
    {
        try {
            const IRI iri(text);
            return hasSoundEscapes(text);
        } catch (const std::logic_error&) {
            return false;
        }
    }

    const char* said(bool value)
    {
        return value ? "true" : "false";
    }

    // What each call of the page does with a value and another.
    const std::map<std::string, std::function<std::string(const std::string&, const std::string&)>>
        calls = {
            {"parse",
             [](const auto& text, const auto&) {
                 try {
                     const IRI iri(text);
                     return "accepted";
                 } catch (const std::logic_error&) {
                     return "refused";
                 }
             }},
            {"isAbsolute",
             [](const auto& text, const auto&) { return said(valueOf(text).isAbsolute()); }},
            {"text", [](const auto& text, const auto&) { return valueOf(text).toStringUtf8(); }},
            {"strict text",
             [](const auto& text, const auto&) { return valueOf(text).toStringUtf8(true); }},
            {"text after strict text",
             [](const auto& text, const auto&) {
                 const IRI iri = valueOf(text);
                 iri.toStringUtf8(true);
                 return iri.toStringUtf8();
             }},
            {"strict user information",
             [](const auto& text, const auto&) {
                 return valueOf(text).getUserInfoUtf8(Encoding::IriStrict);
             }},
            {"decoded path",
             [](const auto& text, const auto&) {
                 return valueOf(text).getPathUtf8(Encoding::Decoded);
             }},
            {"resolve",
             [](const auto& text, const auto& base) {
                 return valueOf(text).resolveAgainst(valueOf(base)).toStringUtf8();
             }},
            {"resolve, strict text",
             [](const auto& text, const auto& base) {
                 return valueOf(text).resolveAgainst(valueOf(base)).toStringUtf8(true);
             }},
            {"resolve, after text",
             [](const auto& text, const auto& base) {
                 return resolvedAfter(text, base, false).toStringUtf8();
             }},
            {"resolve, strict text, after strict text",
             [](const auto& text, const auto& base) {
                 return resolvedAfter(text, base, true).toStringUtf8(true);
             }},
            {"resolve, from its parts",
             [](const auto& text, const auto& base) {
                 return fromItsParts(valueOf(text).resolveAgainst(valueOf(base)));
             }},
            {"resolve, from its parts, after strict text",
             [](const auto& text, const auto& base) {
                 return fromItsParts(resolvedAfter(text, base, true));
             }},
            {"rebuild", [](const auto& text,
                           const auto&) { return IRI(IRIArgs(valueOf(text))).toStringUtf8(); }},
            {"rebuild, strict text",
             [](const auto& text, const auto&) {
                 return IRI(IRIArgs(valueOf(text))).toStringUtf8(true);
             }},
            {"rebuild with pair",
             [](const auto& text, const auto& pair) {
                 return rebuiltWithPair(text, pair, true).toStringUtf8();
             }},
            {"rebuild with plain pair",
             [](const auto& text, const auto& pair) {
                 return rebuiltWithPair(text, pair, false).toStringUtf8();
             }},
            {"rebuild with query",
             [](const auto& text, const auto& query) {
                 return IRI(IRIArgs(valueOf(text)).setQuery(query)).toStringUtf8();
             }},
            {"rebuild into",
             [](const auto& text, const auto& used) {
                 return rebuiltInto(text, used).toStringUtf8();
             }},
            {"relative",
             [](const auto& text, const auto& base) {
                 return valueOf(text).makeRelativeTo(valueOf(base)).toStringUtf8();
             }},
            {"==", [](const auto& left,
                      const auto& right) { return said(valueOf(left) == valueOf(right)); }},
            {"!=", [](const auto& left,
                      const auto& right) { return said(valueOf(left) != valueOf(right)); }},
            {"same hash",
             [](const auto& left, const auto& right) {
                 return said(valueOf(left).hashValue() == valueOf(right).hashValue());
             }},
    };

    std::string answerOf(const PageRow& row)
    {
        try {
            return calls.at(row.at("Call"))(meaning(row.at("Value")), meaning(row.at("With")));
        } catch (const std::out_of_range&) {
            throw;
        } catch (const std::exception& failure) {
            return failure.what();
        }
    }

    std::string shown(const PageRow& row)
    {
        return row.at("Call") + ' ' + row.at("Value") + ' ' + row.at("With");
    }

} // namespace

TEST(Departures, areWhatTheLibraryDoes)
{
    const std::vector<PageRow> rows = rowsOfThePage();
    EXPECT_GE(rows.size(), 140U);
    for (const PageRow& row : rows) {
        SCOPED_TRACE(shown(row));
        EXPECT_EQ(answerOf(row), meaning(row.at("Ours")));
    }
}

TEST(Departures, sayWhereARelativeReferenceLeads)
{
    for (const PageRow& row : rowsOfThePage())
        if (row.at("Call") == "relative") {
            SCOPED_TRACE(shown(row));
            const IRI base = valueOf(meaning(row.at("With")));
            const IRI reference = valueOf(meaning(row.at("Value"))).makeRelativeTo(base);
            EXPECT_EQ(reference.resolveAgainst(base).toStringUtf8(),
                      meaning(row.at("It resolves to")));
        }
}

TEST(Departures, quoteTheAnswersOfTheRfc)
{
    for (const PageRow& row : rowsOfThePage()) {
        if (!isLiteral(row.at("RFC")))
            continue;
        SCOPED_TRACE(shown(row));
        const std::string call = row.at("Call");
        const std::string answer = meaning(row.at("RFC"));
        if (call.rfind("resolve", 0) == 0) {
            const std::string reference = valueOf(meaning(row.at("Value"))).toStringUtf8();
            const std::string base = valueOf(meaning(row.at("With"))).toStringUtf8();
            EXPECT_EQ(strictlyResolved(reference, base), answer);
        } else if (call == "rebuild" || call == "rebuild, strict text") {
            EXPECT_EQ(fromItsParts(valueOf(meaning(row.at("Value")))), answer);
        } else if (call == "relative") {
            EXPECT_EQ(strictlyResolved(answer, meaning(row.at("With"))), meaning(row.at("Value")));
        }
    }
}

TEST(Departures, sayWhatARebuiltTextNames)
{
    int compared = 0;
    for (const PageRow& row : rowsOfThePage()) {
        const std::string call = row.at("Call");
        const std::string rfc = row.at("RFC");
        if ((call != "rebuild" && call != "rebuild, strict text") || isLiteral(rfc))
            continue;
        SCOPED_TRACE(shown(row));
        ++compared;
        const std::string text = fromItsParts(valueOf(meaning(row.at("Value"))));
        const std::string rebuilt = meaning(row.at("Ours"));
        const bool areBothIris = isIri(text) && isIri(rebuilt);
        const bool isTheSame = normalForm(text) == normalForm(rebuilt);
        const std::string verdict = !areBothIris ? "none" : isTheSame ? "the same" : "another";
        EXPECT_EQ(rfc.substr(0, rfc.find_first_of(",:")), verdict);
    }
    EXPECT_GE(compared, 25);
}

TEST(Departures, giveAdviceWhereTheAnswersDiffer)
{
    for (const PageRow& row : rowsOfThePage()) {
        SCOPED_TRACE(shown(row));
        const std::string rfc = row.at("RFC");
        const std::string ours = row.at("Ours");
        const bool leadsBack = row.at("Call") != "relative"
                               || meaning(row.at("It resolves to")) == meaning(row.at("Value"));
        EXPECT_EQ(row.at("What you can do").empty(), rfc == ours && leadsBack);
    }
}

TEST(Departures, areMeasuredByAResolverThatFollowsTheRfc)
{
    for (const Example& row : normalExamples)
        EXPECT_EQ(strictlyResolved(row.reference, rfcBase), row.target);
    for (const Example& row : abnormalExamples)
        EXPECT_EQ(strictlyResolved(row.reference, rfcBase), row.target);
    // RFC 3986, 6.2.2, and 3.2.3
    EXPECT_EQ(normalForm("eXAMPLE://a/./b/../b/%63/%7bfoo%7d"), "example://a/b/c/%7Bfoo%7D");
    EXPECT_EQ(normalForm("HTTP://U@H%41%c3%89:0080/%7Eé"), "http://U@ha%C3%89:80/~%C3%A9");
    EXPECT_EQ(normalForm("x://[::00]:0"), "x://[::00]:0");
    // RFC 3986, 5.2.4
    EXPECT_EQ(strictlyResolved("x:/a/b/c/./../../g", "x:"), "x:/a/g");
    EXPECT_EQ(strictlyResolved("x:mid/content=5/../6", "x:"), "x:mid/6");
}

} // namespace foundation::network
