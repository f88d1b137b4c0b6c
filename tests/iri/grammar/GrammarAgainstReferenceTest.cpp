// Holds the grammars against a second reading of the same productions, which shares no code with
// them: on all short texts over small alphabets, on every code point, and on texts made at random.
//
// ZKFLNETWORK_TEST_FACTOR multiplies the number of random texts; below 1, for slow builds, it also
// shortens the exhaustive runs by one character and visits fewer code points.
// ZKFLNETWORK_TEST_SEED begins another series.

#include "iri/grammar/IriGrammar.hpp"
#include "iri/grammar/PathSegmentGrammar.hpp"
#include "iri/grammar/PercentDecodeGrammar.hpp"
#include "iri/grammar/PortGrammar.hpp"
#include "iri/grammar/SchemeGrammar.hpp"
#include "reference/Printing.hpp"
#include "reference/SpiritGrammars.hpp"
#include "reference/TextGenerator.hpp"
#include "text/LaxUtf8.hpp"

#include "build/NaiveText.hpp"

#include <foundation/network/IRI.hpp>

#include <boost/optional.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::iri::grammar {

namespace {

    using reference::Match;
    using reference::printed;
    using reference::Range;
    using reference::ReferenceParts;

    const char* environment(const char* name)
    {
        return std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here sets a variable
    }

    double caseFactor()
    {
        const char* const factor = environment("ZKFLNETWORK_TEST_FACTOR");
        return factor ? std::strtod(factor, nullptr) : 1.0;
    }

    std::uint64_t seed()
    {
        const char* const chosen = environment("ZKFLNETWORK_TEST_SEED");
        return chosen ? std::strtoull(chosen, nullptr, 0) : 0x3987'3986;
    }

    /// Once a test has failed there is nothing to learn from a million failures more.
    bool hasFailed()
    {
        return ::testing::Test::HasFailure();
    }

    /// Calls @p check with every text of up to @p longest pieces, the empty one first.
    template <class Check>
    void forEachText(const std::vector<std::u32string>& pieces, std::size_t longest, Check check)
    {
        if (caseFactor() < 1)
            --longest;
        std::vector<std::size_t> digits; // the text as a number: which piece stands where
        while (!hasFailed()) {
            std::u32string text;
            for (const std::size_t digit : digits)
                text += pieces[digit];
            check(text);

            std::size_t at = 0;
            while (at < digits.size() && digits[at] + 1 == pieces.size())
                digits[at++] = 0;
            if (at < digits.size())
                ++digits[at];
            else if (digits.size() < longest)
                digits.push_back(0);
            else
                return;
        }
    }

    std::vector<std::u32string> eachOf(const std::u32string& characters)
    {
        std::vector<std::u32string> pieces;
        for (const char32_t c : characters)
            pieces.emplace_back(1, c);
        return pieces;
    }

    /// Calls @p check with every value up to a little behind the last code point.
    template <class Check>
    void forEachCodePoint(Check check)
    {
        // Above the first plane, classes change only near the ends of a plane and among assigned
        // characters, which slow builds pass over.
        const bool everyOne = caseFactor() >= 1;
        for (char32_t c = 0; c < 0x110100 && !hasFailed(); ++c) {
            const char32_t inPlane = c & 0xFFFF;
            if (everyOne || c < 0x10000 || inPlane < 0x1100 || inPlane > 0xFF00)
                check(c);
        }
    }

    /// Calls @p check with texts that @p invent makes of a generator.
    template <class Invent, class Check>
    void forRandomTexts(double count, Invent invent, Check check)
    {
        reference::TextGenerator generator(seed());
        const auto last = static_cast<std::uint64_t>(count * caseFactor());
        for (std::uint64_t number = 0; number < last && !hasFailed(); ++number) {
            check(invent(generator));
            if (hasFailed())
                ADD_FAILURE() << "seed " << seed() << ", text number " << number;
        }
    }

    using It = std::u32string::const_iterator;

    std::optional<Range> offsets(It begin, const boost::optional<boost::iterator_range<It>>& range)
    {
        if (!range)
            return std::nullopt;
        return Range{static_cast<std::size_t>(range->begin() - begin),
                     static_cast<std::size_t>(range->end() - begin)};
    }

    bool isCharacter(char32_t c)
    {
        return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
    }

    // What callers give is UTF-8 or UTF-16, which the grammar reads without decoding it first. What
    // is no character has neither.
    void compareTaking(const std::u32string& text, bool expected)
    {
        if (!std::ranges::all_of(text, isCharacter))
            return;
        const bool ofUtf8 = IRI::tryParse(tests::toUtf8(text)).has_value();
        const bool ofUtf16 = IRI::tryParse(tests::toUtf16(text)).has_value();
        if (expected == ofUtf8 && expected == ofUtf16)
            return;
        EXPECT_EQ(expected, ofUtf8) << printed(text);
        EXPECT_EQ(expected, ofUtf16) << printed(text);
    }

    void compareReference(const std::u32string& text)
    {
        ReferenceParts expected;
        const Match expectedMatch = reference::parseIriReference(text, expected);
        compareTaking(text, reference::isIri(text, expectedMatch, expected));

        iri::detail::Parts<It> parts;
        It first = text.begin();
        const bool matched = parseIriReference(first, text.end(), parts);
        const Match actualMatch{matched, static_cast<std::size_t>(first - text.begin())};
        const auto& hierarchicalPart = parts.hierarchicalPart;
        const ReferenceParts actual{offsets(text.begin(), parts.scheme),
                                    offsets(text.begin(), hierarchicalPart.userInfo),
                                    offsets(text.begin(), hierarchicalPart.host),
                                    offsets(text.begin(), hierarchicalPart.port),
                                    offsets(text.begin(), hierarchicalPart.path),
                                    offsets(text.begin(), parts.query),
                                    offsets(text.begin(), parts.fragment)};

        if (expectedMatch == actualMatch && expected == actual)
            return; // the macros below cost more than the two parses
        EXPECT_EQ(expectedMatch, actualMatch) << printed(text);
        EXPECT_EQ(expected, actual) << printed(text);
    }

    void compareScheme(const std::u32string& text)
    {
        const Match expected = reference::parseScheme(text);
        It first = text.begin();
        const bool matched = parseScheme(first, text.end());
        const Match actual{matched, static_cast<std::size_t>(first - text.begin())};
        if (expected == actual)
            return;
        EXPECT_EQ(expected, actual) << printed(text);
    }

    void compareSegments(const std::u32string& path)
    {
        const std::vector<std::u32string> before{U"what", U"was there"};
        std::vector<std::u32string> expected = before;
        const bool expectedSplit = reference::splitPathSegments(path, expected);
        const std::string lax = text::toLaxUtf8(path);
        std::vector<std::string_view> found;
        const bool actualSplit = splitPathSegments(lax, found);
        std::vector<std::u32string> actual = before;
        if (actualSplit) {
            actual.clear();
            for (const std::string_view segment : found)
                actual.push_back(text::fromLaxUtf8(segment));
        }
        if (expectedSplit == actualSplit && expected == actual)
            return;
        EXPECT_EQ(expectedSplit, actualSplit) << printed(path);
        EXPECT_EQ(expected, actual) << printed(path);
    }

    /// Values below 256, since an escape holds one byte, and one above that no escape can mean.
    const std::vector<std::u32string>& exclusions()
    {
        static const std::vector<std::u32string> sets = [] {
            std::u32string bytes;
            for (char32_t value = 0; value < 256; ++value)
                bytes += value;
            return std::vector<std::u32string>{U"",       U"%",  U"/?#",   std::u32string(1, U'\0'),
                                               U"\u00E9", bytes, U"\u0141"};
        }();
        return sets;
    }

    void compareDecoding(const std::u32string& text, const std::u32string& excluded)
    {
        std::u32string expected;
        const Match expectedMatch = reference::percentDecode(text, excluded, expected);

        const std::u32string_view view = text;
        std::u32string actual;
        auto first = view.begin();
        const bool matched = percentDecode(first, view.end(), excluded, actual);
        const Match actualMatch{matched, static_cast<std::size_t>(first - view.begin())};

        if (expectedMatch == actualMatch && expected == actual)
            return;
        EXPECT_EQ(expectedMatch, actualMatch) << printed(text) << " but " << printed(excluded);
        EXPECT_EQ(printed(expected), printed(actual))
            << printed(text) << " but " << printed(excluded);
    }

    void comparePort(const std::u32string& text)
    {
        const std::uint16_t before = 12345;
        std::uint16_t expected = before;
        const Match expectedMatch = reference::parsePort(text, expected);

        const std::u32string_view view = text;
        std::uint16_t actual = before;
        auto first = view.begin();
        const bool matched = parsePort(first, view.end(), actual);
        const Match actualMatch{matched, static_cast<std::size_t>(first - view.begin())};

        const bool expectedWhole = expectedMatch == Match{true, text.size()};
        std::uint16_t whole = before;
        const bool actualWhole = portStringToNumeric(text, whole);

        if (expectedMatch == actualMatch && expected == actual && expectedWhole == actualWhole
            && (!expectedWhole || whole == expected))
            return;
        EXPECT_EQ(expectedMatch, actualMatch) << printed(text);
        EXPECT_EQ(expected, actual) << printed(text);
        EXPECT_EQ(expectedWhole, actualWhole) << printed(text);
        if (expectedWhole) {
            EXPECT_EQ(expected, whole) << printed(text);
        }
    }

    TEST(GrammarAgainstReference, agreesOnAllShortTexts)
    {
        forEachText(eachOf(U"a:/?#@[]%.1\u00E9"), 6, compareReference);
    }

    TEST(GrammarAgainstReference, agreesOnAllShortLiterals)
    {
        forEachText(eachOf(U"1:.[]f"), 7,
                    [](const std::u32string& text) { compareReference(U"http://[" + text); });
    }

    TEST(GrammarAgainstReference, agreesOnAllArrangementsOfIpv6Groups)
    {
        forEachText({U"1:", U":", U"f", U"1.2.3.4"}, 10,
                    [](const std::u32string& text) { compareReference(U"//[" + text + U"]"); });
    }

    TEST(GrammarAgainstReference, agreesOnAllShortVersionedLiterals)
    {
        forEachText(eachOf(U"vVf.:!\u00E9\uFF21%@]"), 5, [](const std::u32string& text) {
            compareReference(U"//[v" + text);
            compareReference(U"//[" + text);
        });
    }

    TEST(GrammarAgainstReference, agreesOnAllShortDottedQuads)
    {
        forEachText(eachOf(U"0125.a@"), 7,
                    [](const std::u32string& text) { compareReference(U"//" + text); });
    }

    TEST(GrammarAgainstReference, agreesOnAllLastNumbersOfDottedQuads)
    {
        // Only a literal shows whether a quad was one: as a name any host passes.
        forEachText(eachOf(U"012569.:\u0660\uFF15"), 5, [](const std::u32string& text) {
            compareReference(U"//[::1.2.3." + text + U"]");
            compareReference(U"//1.2.3." + text + U"]");
        });
        forEachText(eachOf(U"0125."), 8,
                    [](const std::u32string& text) { compareReference(U"//[::" + text + U"]"); });
    }

    TEST(GrammarAgainstReference, agreesOnAllShortEscapes)
    {
        const auto pieces = eachOf(U"%0aAfFgG\uFF10\uFF26\u0660");
        for (const std::u32string before : {U"", U"a:", U"//", U"/", U"?", U"#"}) {
            forEachText(pieces, 4,
                        [&](const std::u32string& text) { compareReference(before + text); });
        }
        forEachText(pieces, 4,
                    [](const std::u32string& text) { compareReference(U"//" + text + U"@%41"); });
    }

    TEST(GrammarAgainstReference, agreesOnEveryCodePointInEveryPlace)
    {
        struct Place {
            std::u32string before, behind;
        };
        const Place places[] = {
            {U"", U":"},             // the first of a scheme, or of a path
            {U"a", U":"},            // inside a scheme
            {U"//", U"@"},           // user info
            {U"//", U""},            // host
            {U"//1.2.3.4", U""},     // behind an address
            {U"//1.2.3.", U""},      // inside an address
            {U"//[::1.2.3.", U"]"},  // inside an address that must be one
            {U"//[::1.2.3.0", U"]"}, // behind its zero
            {U"//[::", U"]"},        // hexadecimal
            {U"//[v", U".a]"},       // version
            {U"//[v1.", U"]"},       // versioned address
            {U"//:", U""},           // port
            {U"/", U""},             // path
            {U"?", U""},             // query
            {U"#", U""},             // fragment
            {U"//%a", U""},          // escape
        };
        for (const Place& place : places) {
            forEachCodePoint(
                [&](char32_t c) { compareReference(place.before + c + place.behind); });
        }
    }

    TEST(GrammarAgainstReference, agreesOnRandomTexts)
    {
        forRandomTexts(
            2e6, [](auto& generator) { return generator.reference(); }, compareReference);
    }

    TEST(GrammarAgainstReference, agreesOnSchemes)
    {
        forEachText(eachOf(U"aZ\u00E91\u0663+-.:_"), 5, compareScheme);
        forEachCodePoint([](char32_t c) {
            compareScheme({c});
            compareScheme({U'a', c, U'b'});
        });
        forRandomTexts(
            1e5, [](auto& generator) { return generator.scheme(); }, compareScheme);
    }

    TEST(GrammarAgainstReference, agreesOnPathSegments)
    {
        forEachText(eachOf(U"/a.?"), 8, compareSegments);
        forEachCodePoint([](char32_t c) { compareSegments({U'a', U'/', c}); });
        compareSegments({U'/', 0xFFFFFF2F, U'/', 0x80000000}); // no slash, and no code points
        forRandomTexts(
            2e5, [](auto& generator) { return generator.path(); }, compareSegments);
        forRandomTexts(
            1e5, [](auto& generator) { return generator.reference(); }, compareSegments);
    }

    TEST(GrammarAgainstReference, agreesOnPercentDecoding)
    {
        for (const std::u32string& excluded : exclusions()) {
            forEachText(eachOf(U"%25fFg\u00E9\uFF12"), 5,
                        [&](const std::u32string& text) { compareDecoding(text, excluded); });
            forEachText({U"%25", U"%2", U"%", U"%2f", U"%C3", U"%E9", U"2f"}, 4,
                        [&](const std::u32string& text) { compareDecoding(text, excluded); });
            for (char32_t high = 0; high < 0x100; ++high) {
                for (char32_t low = 0; low < 0x100; ++low)
                    compareDecoding({U'%', high, low}, excluded);
            }
            forRandomTexts(
                1e5, [](auto& generator) { return generator.escaped(); },
                [&](const std::u32string& text) { compareDecoding(text, excluded); });
        }
        forEachCodePoint([](char32_t c) { compareDecoding({U'%', U'4', c}, U""); });
    }

    TEST(GrammarAgainstReference, agreesOnPorts)
    {
        forEachText(eachOf(U"0156a\u0665"), 7, comparePort);
        for (std::uint32_t number = 0; number < 200'000; ++number) {
            std::u32string digits;
            for (const char digit : std::to_string(number))
                digits += static_cast<char32_t>(digit);
            comparePort(digits);
            comparePort(U"00" + digits);
        }
        forEachCodePoint([](char32_t c) {
            comparePort({c});
            comparePort({U'8', c});
        });
        comparePort(U"4294967377");           // 2^32 + 81
        comparePort(U"18446744073709551697"); // 2^64 + 81
        comparePort(std::u32string(1'000'000, U'0') + U"80");
        comparePort(std::u32string(1'000'000, U'1'));
        forRandomTexts(
            2e5, [](auto& generator) { return generator.port(); }, comparePort);
    }

} // namespace

} // namespace foundation::network::iri::grammar
