#include <foundation/network/IRI.hpp>

#include "build/BagTesting.hpp"
#include "iri/Expect.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

// Values that were built, which is to say not made from a text, beside each other and beside parsed
// ones.
namespace foundation::network {

namespace {

    using namespace tests;

    IRI builtOfPath(const std::string& path)
    {
        return IRI(IRIArgs().setPath(path));
    }

    // Keeps the components of a reference in the form of its text, except for the path.
    IRI resolved(const std::string& reference, const std::string& base)
    {
        return parsed(reference).resolveAgainst(parsed(base));
    }

    void expectEqual(const IRI& left, const IRI& right)
    {
        EXPECT_TRUE(left == right);
        EXPECT_FALSE(left != right);
        EXPECT_TRUE(right == left);
        EXPECT_FALSE(right != left);
    }

    void expectDifferent(const IRI& left, const IRI& right)
    {
        EXPECT_FALSE(left == right);
        EXPECT_TRUE(left != right);
        EXPECT_FALSE(right == left);
        EXPECT_TRUE(right != left);
    }

    void expectNeitherIsLess(const IRI& left, const IRI& right)
    {
        EXPECT_FALSE(left < right);
        EXPECT_FALSE(right < left);
    }

    void expectLess(const IRI& left, const IRI& right)
    {
        EXPECT_TRUE(left < right);
        EXPECT_FALSE(right < left);
    }

    const std::string invalidCodePoint =
        "Invalid UTF-32 code point U+0x11fffe encountered while trying to encode UTF-16 sequence";

    // A non-character, if it were a character at all: it cannot be escaped.
    const std::u32string inescapable{0x11FFFE};

    IRI unprintable()
    {
        IRIArgs args;
        static_cast<Base&>(args).setQuery(inescapable);
        return IRI(args);
    }

} // namespace

TEST(BuiltEquality, goesByTheComponents)
{
    constexpr const char* texts[] = {
        "",     "?",     "#",        "?#",    "a",    "A",     "a?",    "a#",
        "x:",   "X:",    "y:",       "x:a",   "x:?",  "/a",    "//",    "//@",
        "//h",  "//H",   "//h/",     "//u@h", "//@h", "//h:0", "//h:1", "//h:2",
        "//h?", "x://h", "x://h:80", "a?q",   "a?Q",  "a#f",   "a?q#f",
    };
    for (const char* left : texts)
        for (const char* right : texts) {
            SCOPED_TRACE(std::string(left) + " and " + right);
            if (left == right)
                expectEqual(built(left), built(right));
            else
                expectDifferent(built(left), built(right));
            // The same holds beside a parsed value.
            if (left == right)
                expectEqual(parsed(left), built(right));
            else
                expectDifferent(parsed(left), built(right));
        }
}

TEST(BuiltEquality, goesByPlainTextInOneWayOrTheOther)
{
    expectEqual(builtOfPath("a b"), builtOfPath("a b"));
    expectEqual(builtOfPath("a b"), parsed("a%20b"));
    expectEqual(builtOfPath("a b"), resolved("a%20b", ""));
    expectDifferent(builtOfPath("a b"), builtOfPath("a%20b"));
    expectEqual(built("//h:0080"), built("//h:80"));
    expectDifferent(parsed("//h:0080"), built("//h:80")); // by their texts
    expectEqual(built("%C3%A9"), builtOfPath("é"));
    expectDifferent(built("%c3%a9"), parsed("%C3%A9"));
}

TEST(BuiltEquality, ofAnyValueAndTheOneParsedFromItsText)
{
    std::vector<IRI> values;
    for (const char* text : {"s://u@h:8/p?q#f", "a%3Ab", "%2541?%26#%41", "//a%20b", "?é", "x:"})
        values.push_back(built(text));
    values.emplace_back(IRIArgs().appendQueryKeyValuePair("é ", "&", true, false));
    values.emplace_back(IRIArgs().appendQueryKeyValuePair("é ", "&", false, false));
    values.push_back(resolved("../%41?%41#%zz", "http://h/a/b/c"));
    for (const IRI& value : values) {
        SCOPED_TRACE(value.toStringUtf8());
        const IRI again = parsed(value.toStringUtf8());
        expectEqual(value, again);
        expectNeitherIsLess(value, again);
        EXPECT_EQ(value.hashValue(), again.hashValue());
        expectEqual(value, IRI(value)); // NOLINT(performance-unnecessary-copy-initialization)
    }
}

TEST(BuiltEquality, withAParsedValueLooksAtSchemeAndPortFirst)
{
    expectEqual(builtOfPath("//h"), parsed("//h")); // a path beside a host, of the same text
    const IRI path = builtOfPath("//h:8");
    const IRI port = parsed("//h:8");
    EXPECT_EQ(path.toStringUtf8(), port.toStringUtf8());
    EXPECT_EQ(path.hashValue(), port.hashValue());
    expectDifferent(path, port);                            // only one has a port
    expectDifferent(builtOfPath("//h:0"), parsed("//h:0")); // and a port of 0 is one
    expectDifferent(builtOfPath("//h"), built("//h"));
}

// The path of both is stored as plain text, the rest of the left one as it was written.
TEST(BuiltEquality, readsBothInTheFormOfTheLeft)
{
    struct Row {
        const char* reference;
        const char* base;
        const char* plain; ///< what the components stand for
    };
    constexpr Row rows[] = {
        {"//%41@h", "x:", "x://A@h"}, {"//%41", "x:", "x://A"},  {"?%41", "x:p", "x:p?A"},
        {"#%41", "x:p", "x:p#A"},     {"//%C3%A9?", "", "//é?"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.plain);
        const IRI left = resolved(row.reference, row.base);
        const IRI right = built(row.plain);
        for (int round = 0; round < 2; ++round) { // what was converted does not matter
            EXPECT_FALSE(left == right);          // "%41" is not "A"
            EXPECT_TRUE(left != right);
            EXPECT_TRUE(right == left); // it stands for "A"
            EXPECT_FALSE(right != left);
            expectNeitherIsLess(left, right); // in plain text both are the same
            EXPECT_NE(left.hashValue(), right.hashValue());
        }
    }
    expectEqual(resolved("%41", "x:p"), built("x:A")); // paths are merged as plain text
    expectEqual(resolved("?%41", "x:p"), resolved("?%41", "x:p"));
    expectDifferent(resolved("?%41", "x:p"), resolved("?A", "x:p"));
}

// How the query is shown is no part of it.
TEST(BuiltEquality, doesNotSeeWhetherAQueryIsFormEncoded)
{
    const IRI plain(IRIArgs().setQuery("a b"));
    const IRI form(IRIArgs().appendQueryKeyValuePair("+", "", false, false).setQuery("a b"));
    ASSERT_EQ(plain.toStringUtf8(), "?a%20b");
    ASSERT_EQ(form.toStringUtf8(), "?a+b");
    expectEqual(plain, form);
    expectNeitherIsLess(plain, form);
    EXPECT_NE(plain.hashValue(), form.hashValue());
    expectDifferent(parsed("?a%20b"), form);
    expectEqual(parsed("?a+b"), form);
}

// The empty reference takes the base over and drops its fragment. What is left is not an empty set
// of components to it, although it has none any more; only `!=` asks.
TEST(BuiltEquality, andInequalityMayBothHold)
{
    const IRI left = IRI().resolveAgainst(built("x:#f"));
    const IRI right = built("x:");
    EXPECT_TRUE(left == right);
    EXPECT_TRUE(left != right);
    EXPECT_TRUE(right == left);
    EXPECT_TRUE(right != left);
    expectEqual(left, left);
    expectEqual(left, IRI(left)); // NOLINT(performance-unnecessary-copy-initialization)
    const IRI other = IRI().resolveAgainst(built("x:#g"));
    expectEqual(left, other);
    expectDifferent(left, built("x:a"));
    expectDifferent(left, built("y:"));
}

TEST(BuiltEquality, ofEmptyValues)
{
    for (const IRI& left : {IRI(), parsed(""), IRI(IRIArgs()), builtOfPath("")})
        for (const IRI& right : {IRI(), parsed(""), IRI(IRIArgs()), builtOfPath("")}) {
            expectEqual(left, right);
            expectNeitherIsLess(left, right);
            EXPECT_EQ(left.hashValue(), 0U);
        }
    for (const IRI& empty : {IRI(), parsed(""), builtOfPath("")})
        for (const IRI& other : {built("?"), parsed("?"), built("x:"), parsed("x:")}) {
            expectDifferent(empty, other);
            expectLess(empty, other);
        }
}

// Moving by assignment leaves the source with its flags; its components have no texts any more.
TEST(BuiltEquality, isLostWithTheTexts)
{
    for (const IRI& whole : {builtOfPath("/p"), IRI(IRIArgs().setHost("h").setPath("/p"))}) {
        IRI source(whole);
        expectEqual(source, whole);
        IRI target;
        target = std::move(source);
        expectEqual(target, whole);
        expectDifferent(source, whole); // NOLINT(bugprone-use-after-move): meant
        IRI second(whole);
        target = std::move(second);
        expectEqual(source, second); // NOLINT(bugprone-use-after-move): meant
    }
}

TEST(BuiltOrder, ofTwoBuiltValuesIsThatOfTheirPlainTexts)
{
    // As they are shown, "a%20b" comes after "a!".
    const IRI space = builtOfPath("a b");
    const IRI exclamation = builtOfPath("a!");
    expectLess(space, exclamation);
    expectLess(builtOfPath("a"), builtOfPath("a b"));    // a prefix
    expectLess(builtOfPath("\uFFFD"), builtOfPath("😀")); // by code point, not by UTF-16 unit
    expectLess(builtOfPath("z"), builtOfPath("é"));
    expectLess(built("//h:10"), built("//h:9")); // the text of a port, not its number
    expectNeitherIsLess(space, space);
    expectNeitherIsLess(space, resolved("a%20b", ""));

    const IRI bracket(IRIArgs().setHost("[")); // shown as "%5B"
    expectLess(built("//Z"), bracket);
    expectLess(bracket, built("//a"));
}

TEST(BuiltOrder, besideAParsedValueIsThatOfTheTexts)
{
    const IRI space = builtOfPath("a b");
    expectLess(parsed("a!"), space);
    expectLess(space, parsed("a&"));
    expectNeitherIsLess(space, parsed("a%20b"));
    expectLess(parsed("%"), builtOfPath("a"));
    expectLess(builtOfPath("z"), parsed("é"));
}

// So a collection that mixes the two kinds cannot be sorted.
TEST(BuiltOrder, ofBothKindsTogetherRunsInACircle)
{
    const IRI space = builtOfPath("a b");
    const IRI exclamation = builtOfPath("a!");
    const IRI text = parsed("a!");
    expectLess(space, exclamation);
    expectNeitherIsLess(exclamation, text);
    expectLess(text, space);
}

TEST(BuiltComparison, ofWhatCannotBeConvertedFails)
{
    const IRI undecodable = resolved("?%C0%80", "x:p");
    const IRI plain = built("x:p?q");
    EXPECT_FALSE(undecodable == plain); // in the form of the left
    EXPECT_TRUE(undecodable != plain);
    EXPECT_TRUE(throwsExactly<AnyFailure>([&] { return plain == undecodable; }, invalidUtf8));
    EXPECT_TRUE(throwsExactly<AnyFailure>([&] { return plain != undecodable; }, invalidUtf8));
    EXPECT_TRUE(throwsExactly<AnyFailure>([&] { return plain < undecodable; }, invalidUtf8));
    EXPECT_TRUE(throwsExactly<AnyFailure>([&] { return undecodable < plain; }, invalidUtf8));
    EXPECT_EQ(undecodable.hashValue(), naiveHash("x:p?%C0%80"));
    EXPECT_TRUE(undecodable == parsed("x:p?%C0%80"));
    EXPECT_TRUE(undecodable < parsed("x:q"));

    const IRI value = unprintable();
    EXPECT_TRUE(value == unprintable());
    EXPECT_FALSE(value < unprintable());
    for (int round = 0; round < 2; ++round) // a failure is no hash
        EXPECT_TRUE(
            throwsExactly<RangeFailure>([&] { return value.hashValue(); }, invalidCodePoint));
    EXPECT_TRUE(
        throwsExactly<RangeFailure>([&] { return value == parsed("?q"); }, invalidCodePoint));
    EXPECT_TRUE(
        throwsExactly<RangeFailure>([&] { return parsed("?q") < value; }, invalidCodePoint));
    EXPECT_FALSE(value == parsed("x:?q")); // the scheme decides
    EXPECT_FALSE(value == parsed(""));
    // What has no code point is still a code unit with a hash, as long as it is not escaped.
    IRIArgs args;
    static_cast<Base&>(args).setQuery(std::u32string{0x110000});
    EXPECT_EQ(IRI(args).hashValue(), IRI(args).hashValue());
}

TEST(BuiltComparison, goesFromComponentToComponent)
{
    // The host is converted though only the right side has a query.
    const IRI left = resolved("//h", "x:");
    IRIArgs args;
    args.setScheme("x").setQuery("q");
    static_cast<Base&>(args).setHost(inescapable);
    const IRI right(args);
    EXPECT_TRUE(throwsExactly<RangeFailure>([&] { return left == right; }, invalidCodePoint));
    EXPECT_TRUE(throwsExactly<RangeFailure>([&] { return left != right; }, invalidCodePoint));
    expectDifferent(left, IRI(args.setUserInfo("u"))); // which comes before the host
}

TEST(BuiltComparison, keepsWhatItConvertsBeforeItFindsADifference)
{
    const IRI reference = resolved("?q", "x://h/p");
    IRIArgs args;
    args.setScheme("x").setHost("h").setPath("/p").setFragment("f");
    const IRI value(args.appendQueryKeyValuePair("\u00E9+", "v", false, false));
    const IRI fresh = value;

    // Of a form, the ASCII text is the IRI text too, unless that was there before.
    EXPECT_FALSE(reference == value);
    for (const IRI* iri : {&value, &fresh})
        EXPECT_EQ(iri->getQueryUtf8(IRI::Encoding::Ascii), "%C3%A9%2B=v");
    EXPECT_EQ(value.getQueryUtf8(), "\u00E9%2B=v");
    EXPECT_EQ(fresh.getQueryUtf8(), "%C3%A9%2B=v");
}

TEST(BuiltComparison, ofAnEmptyPathConvertsNone)
{
    IRIArgs args;
    args.setScheme("x");
    static_cast<Base&>(args).setPath(inescapable);
    const IRI value(args);
    for (const IRI& empty :
         {built("x:"), resolved("", "x:").resolveAgainst(built("x:")),
          parsed("x:").makeRelativeTo(parsed("x://h")), parsed("x:").makeRelativeTo(parsed("y:")),
          parsed("x:").makeRelativeTo(parsed("x:p")), resolved("x:", "y:")}) {
        SCOPED_TRACE(empty.toStringUtf8());
        expectDifferent(empty, value);
    }
}

TEST(BuiltComparison, servesTheContainers)
{
    const std::vector<std::string> texts{"b", "a:c", "é", "a", "%22", "", "a", "?", "b", "A"};
    std::vector<IRI> values;
    for (const std::string& text : texts)
        values.push_back(built(text));
    // What is hashed may be looked up by either kind.
    std::unordered_set<IRI> set(values.begin(), values.end());
    EXPECT_EQ(set.size(), 8U);
    for (const std::string& text : texts) {
        EXPECT_TRUE(set.contains(parsed(text)));
        EXPECT_TRUE(set.contains(built(text)));
    }
    EXPECT_FALSE(set.contains(parsed("c")));

    std::sort(values.begin(), values.end());
    std::vector<std::string> sorted;
    for (const IRI& value : values)
        sorted.push_back(value.toStringUtf8());
    // "%22" is sorted as the quotation mark that it stands for.
    EXPECT_EQ(sorted,
              (std::vector<std::string>{"", "%22", "?", "A", "a", "a", "a:c", "b", "b", "é"}));
}

TEST(Comparison, servesMapsOfAHundredThousand)
{
    constexpr std::size_t COUNT = 100000;
    const auto textOf = [](std::size_t i) {
        return "http://host" + std::to_string(i % 97) + ".example/path/" + std::to_string(i)
               + "?q=" + std::to_string(i * i % 1009);
    };
    std::unordered_map<IRI, std::size_t> hashed;
    std::map<IRI, std::size_t> ordered;
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < COUNT; ++i) {
        texts.push_back(textOf(i));
        hashed.emplace(parsed(texts.back()), i);
        ordered.emplace(parsed(texts.back()), i);
    }
    ASSERT_EQ(hashed.size(), COUNT);
    ASSERT_EQ(ordered.size(), COUNT);
    for (std::size_t i = 0; i < COUNT; i += 7) {
        const IRI key = parsed(texts[i]);
        EXPECT_EQ(hashed.at(key), i);
        EXPECT_EQ(ordered.at(key), i);
        EXPECT_FALSE(hashed.contains(parsed(texts[i] + "x")));
        EXPECT_FALSE(ordered.contains(parsed(texts[i] + "x")));
    }
    std::sort(texts.begin(), texts.end());
    std::size_t at = 0;
    for (const auto& [iri, index] : ordered)
        ASSERT_EQ(iri.toStringUtf8(), texts[at++]);
    for (std::size_t i = 0; i < COUNT; i += 2) {
        EXPECT_EQ(hashed.erase(parsed(textOf(i))), 1U);
        EXPECT_EQ(ordered.erase(parsed(textOf(i))), 1U);
    }
    EXPECT_EQ(hashed.size(), COUNT / 2);
    EXPECT_EQ(ordered.size(), COUNT / 2);
    EXPECT_FALSE(hashed.contains(parsed(textOf(0))));
    EXPECT_TRUE(hashed.contains(parsed(textOf(1))));
}

} // namespace foundation::network
