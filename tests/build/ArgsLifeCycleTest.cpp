#include <foundation/network/IRIArgs.hpp>

#include "build/BagTesting.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;

    const std::string fullText = "s://u@h:8/p?a%26b=c#f";

    // All components, and a query that carries its escapes.
    IRIArgs bagWithPair()
    {
        IRIArgs args = fullBag();
        args.clearQuery().appendQueryKeyValuePair("a&b", "c", false, false);
        return args;
    }

    void expectFull(const IRIArgs& args)
    {
        EXPECT_EQ(IRI(args).toStringUtf8(), fullText);
        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, true}));
    }

    // The long texts would be moved out, if anything was.
    IRIArgs bagOfLongTexts()
    {
        const std::string text(100, 'x');
        IRIArgs args;
        args.setScheme(text).setUserInfo(text).setHost(text).setPort(8).setPath("/" + text);
        return args.setQuery(text).setFragment(text);
    }

} // namespace

TEST(IRIArgsLifeCycle, copiesAreWholeAndStandAlone)
{
    const IRIArgs original = bagWithPair();
    IRIArgs copy(original);
    expectFull(copy);
    copy.setScheme("t").clearHost().clearUserInfo().clearPath().clearQuery().clearFragment();
    EXPECT_EQ(IRI(copy).toStringUtf8(), "t:");
    expectFull(original);

    IRIArgs assigned;
    assigned.setScheme("other").setQuery("other");
    IRIArgs& result = assigned = original;
    EXPECT_EQ(&result, &assigned);
    expectFull(assigned);
    assigned.clearFragment();
    expectFull(original);

    assigned = IRIArgs(); // absent components replace present ones
    EXPECT_TRUE(IRI(assigned).isEmpty());
    EXPECT_EQ(queryFlagsOf(assigned), (QueryFlags{false, false}));
}

TEST(IRIArgsLifeCycle, copiesKeepWhetherTheQueryIsFormEncoded)
{
    IRIArgs original;
    original.appendQueryKeyValuePair("a", "b", true, false);
    const IRIArgs copy(original);
    IRIArgs assigned;
    assigned = original;
    EXPECT_EQ(queryFlagsOf(copy), (QueryFlags{true, false}));
    EXPECT_EQ(queryFlagsOf(assigned), (QueryFlags{true, false}));
}

// NOLINTBEGIN(bugprone-use-after-move): that is what is tested
TEST(IRIArgsLifeCycle, aMovedFromBagIsUnchanged)
{
    IRIArgs original = bagWithPair();
    const IRIArgs moved(std::move(original));
    expectFull(moved);
    expectFull(original);

    IRIArgs assigned;
    IRIArgs& result = assigned = std::move(original);
    EXPECT_EQ(&result, &assigned);
    expectFull(assigned);
    expectFull(original);

    IRIArgs longOne = bagOfLongTexts();
    const std::string text = IRI(longOne).toStringUtf8();
    const IRIArgs taken(std::move(longOne));
    EXPECT_EQ(IRI(longOne).toStringUtf8(), text);
    EXPECT_EQ(IRI(taken).toStringUtf8(), text);
    assigned = std::move(longOne);
    EXPECT_EQ(IRI(longOne).toStringUtf8(), text);
    EXPECT_EQ(IRI(assigned).toStringUtf8(), text);
}
// NOLINTEND(bugprone-use-after-move)

TEST(IRIArgsLifeCycle, selfAssignmentChangesNothing)
{
    IRIArgs args = bagWithPair();
    IRIArgs& same = args;
    args = same;
    expectFull(args);
    args = std::move(same); // NOLINT(bugprone-use-after-move): which leaves everything as it was
    expectFull(args);
    Base& base = args;
    const Base& sameBase = args;
    base = sameBase;
    expectFull(args);
}

TEST(ArgsBaseLifeCycle, copiesAreWholeAndStandAlone)
{
    const IRIArgs original = bagWithPair();
    Base copy(original); // NOLINT(cppcoreguidelines-slicing): nothing is cut off
    EXPECT_EQ(iri::detail::TemplateIRI<std::u32string>(copy).toStringUtf8(iri::Encoding::Iri),
              fullText);
    copy.clearFragment();
    expectFull(original);

    IRIArgs target;
    static_cast<Base&>(target) = original;
    expectFull(target);
    static_cast<Base&>(target) = copy;
    EXPECT_EQ(IRI(target).toStringUtf8(), "s://u@h:8/p?a%26b=c");
    static_cast<Base&>(target) = Base();
    EXPECT_TRUE(IRI(target).isEmpty());
}

TEST(ArgsBaseLifeCycle, bagsAreDestroyedThroughTheirBase)
{
    const std::unique_ptr<Base> args = std::make_unique<IRIArgs>(bagOfLongTexts());
    args->setHost("short");
}

TEST(IRIArgsLifeCycle, aBagCanBeUsedAgain)
{
    IRIArgs args = bagWithPair();
    const IRI first(args);
    const IRI second(args);
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);
    args.setHost("i").clearQuery();
    EXPECT_EQ(IRI(args).toStringUtf8(), "s://u@i:8/p#f");
    EXPECT_EQ(first.toStringUtf8(), fullText); // built values have texts of their own
}

} // namespace foundation::network
