#include <foundation/network/IRIArgs.hpp>

#include "build/BagTesting.hpp"
#include "iri/Expect.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;

    const std::string full = "s://u@h:8/p?q#f";

} // namespace

TEST(ToArgs, givesEachComponentAsPlainText)
{
    struct Row {
        const char* text;
        Components components;
    };
    const Row rows[] = {
        {"", {{"path", ""}}},
        {"?", {{"path", ""}, {"query", ""}}},
        {"#", {{"path", ""}, {"fragment", ""}}},
        {"//", {{"host", ""}, {"path", ""}}},
        {"//@", {{"userInfo", ""}, {"host", ""}, {"path", ""}}},
        {"S:", {{"scheme", "S"}, {"path", ""}}},
        {"é:b", {{"scheme", "é"}, {"path", "b"}}},
        {"//h:0080", {{"host", "h"}, {"port", "80"}, {"path", ""}}},
        {"//[::1]", {{"host", "[::1]"}, {"path", ""}}},
        {"//%75%40@%68%2F/%2fa%20b?%26#%23",
         {{"userInfo", "u@"},
          {"host", "h/"},
          {"path", "//a b"},
          {"query", "&"},
          {"fragment", "#"}}},
        {"%C3%A9é?100%#%2541", {{"path", "éé"}, {"query", "100%"}, {"fragment", "%41"}}},
        {"%E9", {{"path", "é"}}}, // a lone byte stands for the character of its value
        {"?a+b%26c", {{"path", ""}, {"query", "a+b&c"}}},
        {full.c_str(), fullComponents},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(componentsOf(IRIArgs(parsed(row.text))), row.components);
        IRIArgs args;
        parsed(row.text).toArgs(args);
        EXPECT_EQ(componentsOf(args), row.components);
    }
}

TEST(ToArgs, ofValuesWithoutAnyTextGivesAnEmptyPath)
{
    for (const IRI& iri : {IRI(), parsed(""), IRI(IRIArgs())}) {
        EXPECT_TRUE(IRI(IRIArgs(iri)).isEmpty());
        IRIArgs args = fullBag();
        iri.toArgs(args);
        EXPECT_EQ(IRI(args).toStringUtf8(), "s://u@h:8");
    }
}

// A scheme or an authority that the bag holds stays; the rest does not.
TEST(ToArgs, mergesIntoABagThatHoldsSomething)
{
    struct Row {
        const char* text;
        const char* merged; ///< with "s://u@h:8/p?q#f"
    };
    constexpr Row rows[] = {
        {"", "s://u@h:8"},
        {"/a", "s://u@h:8/a"},
        {"?", "s://u@h:8?"},
        {"#", "s://u@h:8#"},
        {"/a?b#c", "s://u@h:8/a?b#c"},
        {"t:", "t://u@h:8"},
        {"t:/a", "t://u@h:8/a"},
        {"//i", "s://u@i:8"},
        {"//", "s://u@:8"},
        {"//v@i", "s://v@i:8"},
        {"//i:9", "s://u@i:9"},
        {"t://v@i:9/a?b#c", "t://v@i:9/a?b#c"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        IRIArgs args = fullBag();
        parsed(row.text).toArgs(args);
        EXPECT_EQ(IRI(args).toStringUtf8(), row.merged);
    }
}

TEST(ToArgs, mergesWithoutALookAtWhatFits)
{
    IRIArgs args;
    args.setHost("h");
    parsed("t:a").toArgs(args);
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; },
                                            "Path cannot be relative if authority present"));
}

TEST(ToArgs, overwritesTheFlagsOfTheQuery)
{
    for (const char* text : {"", "?", "?x", "//h/p#f"})
        for (const bool formEncoded : {false, true}) {
            SCOPED_TRACE(text);
            IRIArgs args;
            args.appendQueryKeyValuePair("a&", "b", formEncoded, false);
            parsed(text).toArgs(args);
            EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, false}));
            // Nor does a flag that says "has escapes" hide behind the other.
            args.appendQueryKeyValuePair("a", "b", false, false);
            EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, false}));
        }
}

// The decoded form of such a query is the text as it was put together, and "+" stays "+".
TEST(ToArgs, givesAFormEncodedQueryWithItsEscapes)
{
    IRIArgs args;
    args.appendQueryKeyValuePair("a b", "é&c", true, false);
    const IRI iri(args);
    ASSERT_EQ(iri.toStringUtf8(), "?a+b=%C3%A9%26c");
    IRIArgs again(iri);
    EXPECT_EQ(queryFlagsOf(again), (QueryFlags{true, false}));
    EXPECT_EQ(IRI(again).toStringUtf8(), "?a+b=%C3%A9%26c");
    EXPECT_TRUE(IRI(again) == iri);
}

// Which of its two sides a form-encoded query came from is forgotten.
TEST(ToArgs, ofAQueryWithEscapesAloneMakesItFormEncoded)
{
    IRIArgs args;
    args.appendQueryKeyValuePair("a b", "é&c", false, false);
    const IRI iri(args);
    ASSERT_EQ(iri.toStringUtf8(), "?a+b=é%26c");
    const IRIArgs again(iri);
    EXPECT_EQ(queryFlagsOf(again), (QueryFlags{true, false}));
    EXPECT_EQ(IRI(again).toStringUtf8(), "?a+b=%C3%A9%26c");
}

TEST(ToArgs, ofResolvedValuesGivesTheirComponents)
{
    const IRI base = parsed("http://u@h:80/a/b?q");
    EXPECT_EQ(componentsOf(IRIArgs(parsed("../c%20d?x%26#y%23").resolveAgainst(base))),
              (Components{{"scheme", "http"},
                          {"userInfo", "u"},
                          {"host", "h"},
                          {"port", "80"},
                          {"path", "/c d"},
                          {"query", "x&"},
                          {"fragment", "y#"}}));
    EXPECT_EQ(componentsOf(IRIArgs(parsed("http://u@h:80/a/b#f").makeRelativeTo(base))),
              (Components{{"path", "./b"}, {"fragment", "f"}}));
}

TEST(ToArgs, ofAComponentThatCannotBeDecodedChangesNothing)
{
    for (const char* text : {"t://%C0%80@i:9/a?b#c", "t://v@%C0%80:9/a?b#c", "t://v@i:9/%C0%80?b#c",
                             "t://v@i:9/a?%C0%80#c", "t://v@i:9/a?b#%C0%80", "%ED%A0%80"}) {
        SCOPED_TRACE(text);
        IRIArgs args = fullBag();
        args.appendQueryKeyValuePair("a&", "b", true, false);
        const IRI iri = parsed(text);
        EXPECT_TRUE(throwsExactly<AnyFailure>([&] { iri.toArgs(args); }, invalidUtf8));
        EXPECT_TRUE(throwsExactly<AnyFailure>([&] { IRIArgs{iri}; }, invalidUtf8));
        EXPECT_EQ(IRI(args).toStringUtf8(), "s://u@h:8/p?q&a%26=b#f");
        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{true, false}));
    }
}

TEST(ToArgs, aSchemeThatIsSetAfterwardsIsChecked)
{
    IRIArgs args(parsed("http://h"));
    args.setScheme("1x");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
    parsed("//i").toArgs(args); // leaves the scheme, and that it is to be checked
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
    parsed("x:").toArgs(args);
    EXPECT_EQ(IRI(args).toStringUtf8(), "x://i");
    args.clearScheme();
    static_cast<Base&>(args).setScheme(U"");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
}

// The source of an assignment keeps its predicates, but its texts are gone. So it is the one value
// that has a scheme which the check would refuse.
TEST(ToArgs, aSchemeOutOfAnIriIsNotChecked)
{
    IRI source = parsed("x:a");
    IRI target;
    target = std::move(source);
    // NOLINTBEGIN(bugprone-use-after-move)
    IRIArgs args(source);
    EXPECT_EQ(IRI(args).toStringUtf8(), ":");
    EXPECT_EQ(IRI(args).getSchemeUtf8(), "");
    const IRIArgs copy(args); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(IRI(copy).toStringUtf8(), ":");
    EXPECT_TRUE(throwsExactly<AnyFailure>([&] { args.setScheme("\xFF"); }, invalidUtf8));
    EXPECT_EQ(IRI(args).toStringUtf8(), ":");
    parsed("p").toArgs(args);
    EXPECT_EQ(IRI(args).toStringUtf8(), ":p");
    args.setScheme("");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
    source.toArgs(args);
    EXPECT_EQ(IRI(args).toStringUtf8(), ":");
    args.clearScheme().setScheme("");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
    // NOLINTEND(bugprone-use-after-move)
}

// A path that is gone counts as an empty one; nothing else that is gone does.
TEST(ToArgs, ofTheSourceOfAnAssignmentWithAnAuthorityFails)
{
    struct Row {
        const char* text;
        const char* message;
    };
    constexpr Row rows[] = {{"//h/p", "Item not set: Host"},
                            {"//u@h/p", "Item not set: UserInfo"},
                            {"x:p?q", "Item not set: Query"},
                            {"p#f", "Item not set: Fragment"}};
    for (const Row& row : rows)
        for (const bool isBuilt : {false, true}) {
            SCOPED_TRACE(row.text);
            IRI source = parsed(row.text);
            if (isBuilt)
                source = IRI(IRIArgs(source));
            IRI target;
            target = std::move(source);
            IRIArgs args = fullBag();
            EXPECT_TRUE(throwsExactly<std::runtime_error>(
                [&] { source.toArgs(args); }, row.message)); // NOLINT(bugprone-use-after-move)
            EXPECT_EQ(componentsOf(args), fullComponents);
            EXPECT_EQ(target.toStringUtf8(), row.text);
        }
}

TEST(ToArgs, ofTheSourceOfAMoveByConstructionGivesAnEmptyPath)
{
    IRI source = parsed(full);
    const IRI target(std::move(source));
    EXPECT_TRUE(IRI(IRIArgs(source)).isEmpty()); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(componentsOf(IRIArgs(target)), fullComponents);
}

TEST(ToArgs, doesNotChangeTheIri)
{
    const IRI iri = parsed("s://u@h:8/%7ep?%71#f");
    IRIArgs args(iri);
    args.clearHost().setPath("x");
    EXPECT_EQ(iri.toStringUtf8(), "s://u@h:8/%7ep?%71#f");
    EXPECT_EQ(iri.getPathUtf8(), "/%7ep");
}

TEST(ToArgs, oneComponentCanBeChanged)
{
    const IRI iri = parsed("http://user@host:80/a/b?q#f");
    EXPECT_EQ(IRI(IRIArgs(iri).setHost("例え.jp")).toStringUtf8(),
              "http://user@例え.jp:80/a/b?q#f");
    EXPECT_EQ(IRI(IRIArgs(iri).clearPort()).toStringUtf8(), "http://user@host/a/b?q#f");
    EXPECT_EQ(IRI(IRIArgs(iri).clearUserInfo().clearHost()).toStringUtf8(), "http:/a/b?q#f");
    EXPECT_EQ(IRI(IRIArgs(iri).setFragment("a b")).toStringUtf8(),
              "http://user@host:80/a/b?q#a%20b");
}

} // namespace foundation::network
