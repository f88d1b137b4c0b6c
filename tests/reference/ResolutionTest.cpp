#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "iri/Expect.hpp"
#include "reference/ResolutionRows.hpp"
#include "reference/Rows.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

} // namespace

TEST(Resolution, givesTheNormalExamples)
{
    const IRI base = make(rfcBase);
    for (const Example& row : normalExamples) {
        SCOPED_TRACE(row.reference);
        EXPECT_EQ(make(row.reference).resolveAgainst(base).toStringUtf8(), row.target);
    }
}

TEST(Resolution, givesTheAbnormalExamples)
{
    const IRI base = make(rfcBase);
    for (const Example& row : abnormalExamples) {
        SCOPED_TRACE(row.reference);
        EXPECT_EQ(make(row.reference).resolveAgainst(base).toStringUtf8(), row.target);
    }
}

TEST(Resolution, goesByTheTable)
{
    for (const Row& row : resolutionRows) {
        SCOPED_TRACE(std::string(row.iri) + " against " + row.base);
        EXPECT_EQ(resolved(row.iri, row.base).toStringUtf8(), row.result);
    }
}

TEST(Resolution, setsThePredicatesOfItsResult)
{
    const Row predicates[] = {
        {"g:h", rfcBase, "scheme absolute opaque"},
        {"g:/h", "a", "scheme absolutePath absolute"},
        {"g", rfcBase, "scheme authority absolutePath absolute host"},
        {"?y", rfcBase, "scheme authority query absolutePath absolute host"},
        {"#s", rfcBase, "scheme authority query fragment absolutePath absolute host"},
        {"//g", rfcBase, "scheme authority absolute host"},
        {"//u@g:1", rfcBase, "scheme authority absolute port host userInfo"},
        {"g", "//u@h:1", "authority absolutePath port host userInfo"},
        {"g", "mailto:a", "scheme absolute opaque"},
        {"/g", "mailto:a", "scheme absolutePath absolute"},
        {"?q", "foo:", "scheme query absolute opaque"},
        {"g", "c/d", ""},
        {"..", "c", "empty"},
        {"..", "c/d", "absolutePath"},
        {"foo:a/../b", "http://h/x", "scheme absolutePath absolute"},
        {"g?#", "/a", "query fragment absolutePath"},
    };
    for (const Row& row : predicates) {
        SCOPED_TRACE(std::string(row.iri) + " against " + row.base);
        EXPECT_EQ(predicatesOf(resolved(row.iri, row.base)), row.result);
    }
}

TEST(Resolution, carriesComponentsOverAsTheyAreWritten)
{
    const IRI target = resolved("x", "HTTP://%75%2f@%68:0080/a?%71#%66");
    EXPECT_EQ(target.toStringUtf8(), "HTTP://%75%2f@%68:0080/x");
    EXPECT_EQ(target.getPortNumber(), 80);
    EXPECT_EQ(target.getUserInfoUtf8(), "%75%2f");
    EXPECT_EQ(target.getUserInfoUtf8(Encoding::Decoded), "u/");
    EXPECT_EQ(target.getPortUtf8(), "0080");
    EXPECT_EQ(resolved("?%7e%zz#%7E%2f", "http://h/a").toStringUtf8(), "http://h/a?%7e%zz#%7E%2f");
    EXPECT_EQ(resolved("#f", "http://h/a?%7e%26+").toStringUtf8(), "http://h/a?%7e%26+#f");
    EXPECT_EQ(resolved("//%C3%a9/", "x:").toStringUtf8(), "x://%C3%a9/");
}

TEST(Resolution, writesPathsAnew)
{
    EXPECT_EQ(resolved("x:/%7e", "http://h/").toStringUtf8(), "x:/~");
    EXPECT_EQ(resolved("#f", "http://h/%7e").toStringUtf8(), "http://h/~#f");
    EXPECT_EQ(resolved("/%20%5b%5D%3F%23", "http://h/").toStringUtf8(), "http://h/%20%5B%5D%3F%23");
    EXPECT_EQ(resolved("/é", "http://h/").toAsciiStringUtf8(), "http://h/%C3%A9");
    EXPECT_EQ(resolved("/100%", "http://h/").toStringUtf8(true), "http://h/100%25");
}

TEST(Resolution, ofAnEmptyReferenceKeepsTheTextOfTheBase)
{
    const IRI target = resolved("", "http://h/a/../b?q#g");
    EXPECT_EQ(target.toStringUtf8(), "http://h/a/../b?q#g");
    EXPECT_EQ(target.toString(), u"http://h/a/../b?q#g");
    EXPECT_FALSE(target.hasFragment());
    EXPECT_TRUE(
        throwsExactly<RuntimeFailure>([&] { target.getFragmentUtf8(); }, "Item not set: Fragment"));
    EXPECT_EQ(target.toStringUtf8(true), "http://h/a/../b?q");
    EXPECT_EQ(target.toAsciiStringUtf8(), "http://h/a/../b?q");
    EXPECT_EQ(target.toAsciiStringUtf8(true), "http://h/a/../b?q");
    EXPECT_EQ(predicatesOf(target), "scheme authority query absolutePath absolute host");
    EXPECT_TRUE(target == make("http://h/a/../b?q#g")); // parsed values are compared by their texts
}

TEST(Resolution, ofAnEmptyReferenceKeepsWhatTheBaseHasMade)
{
    const IRI base = make("http://h/é#g");
    ASSERT_EQ(base.toAsciiStringUtf8(), "http://h/%C3%A9#g");
    const IRI target = IRI().resolveAgainst(base);
    EXPECT_EQ(target.toAsciiStringUtf8(), "http://h/%C3%A9#g");
    EXPECT_EQ(target.toStringUtf8(true), "http://h/é");
    EXPECT_FALSE(target.hasFragment());
}

TEST(Resolution, ofAnEmptyReferenceAgainstABuiltBaseHasNoFragment)
{
    IRIArgs args;
    args.setPath(std::string("/a")).setFragment(std::string("g"));
    EXPECT_EQ(IRI().resolveAgainst(IRI(args)).toStringUtf8(), "/a");
    EXPECT_EQ(make("").resolveAgainst(IRI(args)).toStringUtf8(), "/a");
}

TEST(Resolution, ofAnEmptyReferenceKeepsWhatABuiltBaseHasShown)
{
    IRIArgs args;
    args.setPath(std::string("/a")).setFragment(std::string("g"));
    const IRI base(args);
    ASSERT_EQ(base.toStringUtf8(), "/a#g");
    const IRI target = IRI().resolveAgainst(base);
    EXPECT_EQ(target.toStringUtf8(), "/a#g");
    EXPECT_EQ(target.toAsciiStringUtf8(), "/a"); // which was not read before
    EXPECT_FALSE(target.hasFragment());
}

TEST(Resolution, takesEmptyValuesOfEveryKind)
{
    IRI source = make("http://h/a?q#f");
    const IRI moved = std::move(source);
    IRI cleared = make("a");
    cleared = IRI();
    const IRI parsed = make("");
    const IRI none;
    const IRI built = IRI(IRIArgs());

    for (const IRI* const empty :
         {&parsed, &none, &built, &std::as_const(source), &std::as_const(cleared)}) {
        EXPECT_EQ(empty->resolveAgainst(make("http://h/a?q")).toStringUtf8(), "http://h/a?q");
        EXPECT_EQ(make("g").resolveAgainst(*empty).toStringUtf8(), "g");
        EXPECT_EQ(make("?y").resolveAgainst(*empty).toStringUtf8(), "?y");
        EXPECT_EQ(make("#f").resolveAgainst(*empty).toStringUtf8(), "#f");
        EXPECT_EQ(make("../g").resolveAgainst(*empty).toStringUtf8(), "g");
        EXPECT_EQ(make("//h").resolveAgainst(*empty).toStringUtf8(), "//h");
        EXPECT_EQ(make("x:a/../b").resolveAgainst(*empty).toStringUtf8(), "x:b");
        for (const IRI* const other : {&parsed, &none, &built}) {
            const IRI target = empty->resolveAgainst(*other);
            EXPECT_EQ(predicatesOf(target), "empty");
            EXPECT_EQ(target.toStringUtf8(), "");
        }
    }
    // Assigning an empty value to another changes nothing, and so does this.
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { none.resolveAgainst(parsed).getPathUtf8(); },
                                              "Item not set: Path"));
    EXPECT_EQ(make("#f").resolveAgainst(none).getPathUtf8(), "");
}

TEST(Resolution, changesNeitherOperand)
{
    const IRI reference = make("../%61?q");
    const IRI base = make("HTTP://h/%62/c/../d#f");
    EXPECT_EQ(reference.resolveAgainst(base).toStringUtf8(), "HTTP://h/a?q");
    EXPECT_EQ(reference.toStringUtf8(), "../%61?q");
    EXPECT_EQ(reference.getPathUtf8(), "../%61");
    EXPECT_EQ(base.toStringUtf8(), "HTTP://h/%62/c/../d#f");
    EXPECT_EQ(base.getPathUtf8(), "/%62/c/../d");
    EXPECT_TRUE(base.hasFragment());
    // One value may be both.
    EXPECT_EQ(base.resolveAgainst(base).toStringUtf8(), "HTTP://h/b/d#f");
}

TEST(Resolution, goesOnFromItsOwnResults)
{
    // Dots that were kept are kept for good: the result does not know of them.
    const IRI kept = resolved("../x/", "http://h");
    EXPECT_EQ(kept.toStringUtf8(), "http://h/../x/");
    EXPECT_EQ(make("g").resolveAgainst(kept).toStringUtf8(), "http://h/../x/g");
    EXPECT_EQ(kept.resolveAgainst(make("x:")).toStringUtf8(), "http://h/../x/");
    // Dots of the reference alone are enough to have all of them removed.
    EXPECT_EQ(make("./g").resolveAgainst(kept).toStringUtf8(), "http://h/x/g");

    const IRI first = resolved("b/c", "http://h/a?q");
    const IRI second = make("../d?y").resolveAgainst(first);
    EXPECT_EQ(second.toStringUtf8(), "http://h/d?y");
    EXPECT_EQ(make("#f").resolveAgainst(second).toStringUtf8(), "http://h/d?y#f");
    EXPECT_EQ(second.resolveAgainst(make("ftp://g/")).toStringUtf8(), "http://h/d?y");
    EXPECT_EQ(resolved("c", "a/b").resolveAgainst(make("http://h/x/y")).toStringUtf8(),
              "http://h/x/a/c");
}

TEST(Resolution, takesBuiltValues)
{
    IRIArgs args;
    args.setScheme(std::string("http")).setHost(std::string("a b")).setPort(80);
    args.setPath(std::string("/x y/%41")).setQuery(std::string("q r"));
    const IRI base(args);
    EXPECT_EQ(make("g").resolveAgainst(base).toStringUtf8(), "http://a%20b:80/x%20y/g");
    EXPECT_EQ(make("#f").resolveAgainst(base).toStringUtf8(),
              "http://a%20b:80/x%20y/%2541?q%20r#f");
    EXPECT_EQ(pathOf("../é z").resolveAgainst(base).toStringUtf8(), "http://a%20b:80/é%20z");
    EXPECT_EQ(pathOf("a/../b").resolveAgainst(make("c/d")).toStringUtf8(), "c/b");
    EXPECT_EQ(pathOf("a:b").resolveAgainst(make("c")).toStringUtf8(), "a%3Ab");
    EXPECT_EQ(pathOf("a:b").resolveAgainst(make("x:c")).toStringUtf8(), "x:a:b");
}

TEST(Resolution, readsTheQueryOfABaseAsPlainText)
{
    IRIArgs args;
    args.setPath(std::string("/a"));
    args.appendQueryKeyValuePair(std::string("k&"), std::string("v w"), true, false);
    const IRI base(args);
    ASSERT_EQ(base.toStringUtf8(), "/a?k%26=v+w");

    // A reference that has a query brings its form with it.
    EXPECT_EQ(base.resolveAgainst(make("http://h/")).toStringUtf8(), "http://h/a?k%26=v+w");
    // One that has none decides over that of the base, whose escapes are escaped again.
    const IRI target = make("#f").resolveAgainst(base);
    EXPECT_EQ(target.toStringUtf8(), "/a?k%2526=v+w#f");
    EXPECT_EQ(target.getQueryUtf8(Encoding::Decoded), "k%26=v+w");
    // The value knows all the same that its query is form-encoded, and says so as a reference.
    EXPECT_EQ(target.resolveAgainst(make("http://h/")).toStringUtf8(), "http://h/a?k%26=v+w#f");
    // The empty reference takes the base whole.
    EXPECT_EQ(IRI().resolveAgainst(base).toStringUtf8(), "/a?k%26=v+w");
}

TEST(Resolution, letsAFailingTranscoderThrough)
{
    constexpr std::pair<const char*, const char*> failing[] = {
        {"%C0%80", "/a"},      {"/%C0%80", "/a"},         {"x:%C0%80", "/a"},
        {"//h/%C0%80", "/a"},  {"g", "/%C0%80"},          {"../g", "/%C0%80"},
        {"?q", "/%C0%80"},     {"#f", "http://h/%C0%80"}, {"%C0%80", "http://h"},
        {"%C0%80/../a", "/b"}, {"g", "/%ED%A0%80/../b"},  {"#f", "%F4%90%80%80"},
    };
    for (const auto& [reference, base] : failing) {
        SCOPED_TRACE(std::string(reference) + " against " + base);
        const IRI left = make(reference);
        const IRI right = make(base);
        for (int i = 0; i < 2; ++i) // the failure is not remembered as something else
            EXPECT_TRUE(
                throwsExactly<AnyFailure>([&] { left.resolveAgainst(right); }, invalidUtf8));
    }

    constexpr Row passing[] = {
        {"", "/%C0%80", "/%C0%80"}, // nothing is read
        {"/g", "/%C0%80", "/g"},    // the base's path is not asked for
        {"//g", "x:%C0%80", "x://g"},
        {"y:g", "x:%C0%80", "y:g"},
        {"g?%C0%80#%C0%80", "//%C0%80@%C0%80", "//%C0%80@%C0%80/g?%C0%80#%C0%80"},
    };
    for (const Row& row : passing) {
        SCOPED_TRACE(std::string(row.iri) + " against " + row.base);
        EXPECT_EQ(resolved(row.iri, row.base).toStringUtf8(), row.result);
    }
}

// "%" and full-width digits stay as they are in an authority, until a strict text repairs them.
TEST(Resolution, showsARepairedAuthorityAfterAStrictText)
{
    const IRI base = make("http://%Ａ4");
    EXPECT_EQ(make("?%41").resolveAgainst(base).toStringUtf8(), "http://%Ａ4?%41");
    const IRI result = make("?%41").resolveAgainst(base);
    EXPECT_EQ(result.toStringUtf8(true), "http://%25Ａ4?%41");
    EXPECT_EQ(result.toStringUtf8(), "http://%25Ａ4?%41");
    EXPECT_EQ(result.hashValue(), make("http://%25Ａ4?%41").hashValue());
}

TEST(Resolution, survivesTheSourceOfAnAssignment)
{
    // Such a value answers its old predicates while its texts are gone. It need not be of use.
    for (const char* const text : {"a/b", "/a?q", "http://u@h:80/a?q#f", "#f"}) {
        SCOPED_TRACE(text);
        IRI source = make(text);
        IRI other = make("x");
        other = std::move(source);
        for (const bool asBase : {false, true})
            try {
                const IRI plain = make("g#s");
                // NOLINTNEXTLINE(bugprone-use-after-move)
                const IRI result =
                    asBase ? plain.resolveAgainst(source) : source.resolveAgainst(plain);
                EXPECT_NE(result.toStringUtf8(), text);
            } catch (const std::runtime_error& failure) {
                EXPECT_EQ(std::string(failure.what()).rfind("Item not set", 0), 0U)
                    << failure.what();
            }
    }
}

} // namespace foundation::network
