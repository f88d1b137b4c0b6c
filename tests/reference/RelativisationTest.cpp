#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "iri/Expect.hpp"
#include "reference/RelativisationRows.hpp"
#include "reference/Rows.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    std::string shown(const Row& row)
    {
        return std::string(row.iri) + " relative to " + row.base;
    }

} // namespace

TEST(Relativisation, goesByTheTable)
{
    for (const Row& row : relativisationRows) {
        SCOPED_TRACE(shown(row));
        EXPECT_EQ(relative(row.iri, row.base).toStringUtf8(), row.result);
    }
}

TEST(Relativisation, goesFromPathToPath)
{
    for (const PathRow& row : pathRows) {
        const std::string iri = row.prefix + std::string(row.path);
        const std::string base = row.prefix + std::string(row.base);
        SCOPED_TRACE(shown({iri.c_str(), base.c_str(), nullptr}));
        const IRI reference = relative(iri, base);
        EXPECT_EQ(reference.getPathUtf8(Encoding::Decoded), row.result);
        EXPECT_EQ(reference.toStringUtf8(), row.result);
        const std::string back = reference.resolveAgainst(make(base)).toStringUtf8();
        if (row.back)
            EXPECT_EQ(back, row.prefix + std::string(row.back));
        else
            EXPECT_EQ(back, iri);
    }
}

TEST(Relativisation, refusesInOrder)
{
    for (const Row& row : refusals) {
        SCOPED_TRACE(shown(row));
        EXPECT_TRUE(throwsExactly<LogicFailure>([&] { relative(row.iri, row.base); }, row.result));
    }
}

TEST(Relativisation, setsThePredicatesOfItsResult)
{
    constexpr Row predicates[] = {
        {"http://h/a", "http://h/a", "empty"},
        {"http://h/a#f", "http://h/a", "fragment"},
        {"http://h/a", "ftp://h/a", "scheme authority absolutePath absolute host"},
        {"http://u@h:1/a?q#f",
         "ftp:", "scheme authority query fragment absolutePath absolute port host userInfo"},
        {"mailto:a", "x:", "scheme absolute opaque"},
        {"mailto:/a", "x:", "scheme absolutePath absolute"},
        {"http:/a", "http://h/b", "scheme absolutePath absolute"},
        {"http://u@h1:1/a", "http://h2/a", "authority absolutePath port host userInfo"},
        {"http://h/a?q", "http://h/a", "query"},
        {"http://h/a?q#f", "http://h/b", "query fragment"},
        {"http://h", "http://h/a", "authority host"},
        {"http:", "http:/a", "scheme absolute opaque"},
        {"http://h/a", "http://h", "absolutePath"},
        {"/a/c", "/a//b", "absolutePath"},
        {"http://h/a/x", "http://h/a/b", ""},
        {"http://h/", "http://h/a", "empty"},
    };
    for (const Row& row : predicates) {
        SCOPED_TRACE(shown(row));
        EXPECT_EQ(predicatesOf(relative(row.iri, row.base)), row.result);
    }
}

TEST(Relativisation, keepsAComponentAsItIsWritten)
{
    EXPECT_EQ(relative("http://%75@%68:080/%7e?%7E#%7e", "ftp:").toStringUtf8(),
              "http://%75@%68:080/%7e?%7E#%7e");
    EXPECT_EQ(relative("http://%68/%7e?%7E#%7e", "http://g").toStringUtf8(), "//%68/%7e?%7E#%7e");
    EXPECT_EQ(relative("http:/%7e", "http://g").toStringUtf8(), "http:/%7e");
    // A shortened path is written anew.
    EXPECT_EQ(relative("/a/%7e?%7E#%7e", "/a/b").toStringUtf8(), "~?%7E#%7e");
    EXPECT_EQ(relative("http://h/%7e", "http://h").toStringUtf8(), "/~");
}

TEST(Relativisation, showsARepairedAuthorityAfterAStrictText)
{
    const IRI base = make("http:");
    EXPECT_EQ(make("http://%ＡＢC/ä").makeRelativeTo(base).toStringUtf8(), "//%ＡＢC/ä");
    const IRI result = make("http://%ＡＢC/ä").makeRelativeTo(base);
    EXPECT_EQ(result.toStringUtf8(true), "//%25ＡＢC/ä");
    EXPECT_EQ(result.toStringUtf8(), "//%25ＡＢC/ä");
}

TEST(Relativisation, comparesDecodedTexts)
{
    EXPECT_EQ(relative("http://%68/%61?%71", "http://h/a?q").toStringUtf8(), "");
    EXPECT_EQ(relative("http://h/%61?%72", "http://h/a?q").toStringUtf8(), "?%72");
    EXPECT_EQ(relative("http://%68/a/b", "http://h/a/c").toStringUtf8(), "b");
    EXPECT_EQ(relative("http://h/%61/b", "http://h/a/b").toStringUtf8(), "");
    // The segments of a parsed value are compared as they are written.
    EXPECT_EQ(relative("/%61/b", "/a/c").toStringUtf8(), "../a/b");
    EXPECT_EQ(relative("/a%2Fb/c", "/a/b/d").toStringUtf8(), "../../a/b/c");
    // Nothing is folded.
    EXPECT_EQ(relative("http://h/a", "HTTP://h/a").toStringUtf8(), "http://h/a");
    EXPECT_EQ(relative("http://h/a", "http://H/a").toStringUtf8(), "//h/a");
    EXPECT_EQ(relative("http://h:80/a", "http://h:080/a").toStringUtf8(), "//h:80/a");
    EXPECT_EQ(relative("http://h:80/a", "http://h/a").toStringUtf8(), "//h:80/a");
}

TEST(Relativisation, comparesSegmentsOfBuiltValuesDecoded)
{
    EXPECT_EQ(pathOf("/a b/c").makeRelativeTo(pathOf("/a b/d")).toStringUtf8(), "c");
    EXPECT_EQ(pathOf("/a b/c").makeRelativeTo(make("/a%20b/d")).toStringUtf8(), "c");
    EXPECT_EQ(make("/a%20b/c").makeRelativeTo(pathOf("/a b/d")).toStringUtf8(), "c");
    EXPECT_EQ(pathOf("/é/c").makeRelativeTo(make("/%C3%A9/d")).toStringUtf8(), "c");
    EXPECT_EQ(make("/é/c").makeRelativeTo(make("/%C3%A9/d")).toStringUtf8(), "../é/c");
    EXPECT_EQ(make("/%C3%A9/c").makeRelativeTo(pathOf("/é/d")).toStringUtf8(), "../é/c");
    // An escape in plain text is no escape.
    EXPECT_EQ(pathOf("/a/%41").makeRelativeTo(pathOf("/a/b")).toStringUtf8(), "%2541");
    EXPECT_EQ(pathOf("/a/%41").makeRelativeTo(pathOf("/a/b")).getPathUtf8(Encoding::Decoded),
              "%41");
}

TEST(Relativisation, protectsAColonInTheFirstSegment)
{
    EXPECT_EQ(relative("/a/b/x:y", "/a/b").toStringUtf8(), "b/x:y");
    const IRI escaped = relative("/a/b/x:y", "/a/b/c");
    EXPECT_EQ(escaped.getPathUtf8(Encoding::Decoded), "x:y");
    EXPECT_EQ(escaped.toStringUtf8(), "x%3Ay");
    EXPECT_EQ(escaped.resolveAgainst(make("/a/b/c")).toStringUtf8(), "/a/b/x:y");
    EXPECT_EQ(relative("x:a:b/c", "x:d").toStringUtf8(), "../a:b/c");
}

TEST(Relativisation, takesEmptyValuesOfEveryKind)
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
        for (const IRI* const other : {&parsed, &none, &built}) {
            const IRI result = empty->makeRelativeTo(*other);
            EXPECT_EQ(predicatesOf(result), "empty");
            EXPECT_EQ(result.getPathUtf8(), "");
        }
        EXPECT_EQ(make("a").makeRelativeTo(*empty).toStringUtf8(), "a");
        EXPECT_EQ(make("/a?q#f").makeRelativeTo(*empty).toStringUtf8(), "/a?q#f");
        EXPECT_EQ(make("#f").makeRelativeTo(*empty).toStringUtf8(), "#f");
        EXPECT_EQ(make("?q").makeRelativeTo(*empty).toStringUtf8(), "?q");
        EXPECT_EQ(make("//h").makeRelativeTo(*empty).toStringUtf8(), "//h");
        EXPECT_EQ(make("x:").makeRelativeTo(*empty).toStringUtf8(), "x:");
        EXPECT_EQ(empty->makeRelativeTo(make("#f")).toStringUtf8(), "");
        const Row refused[] = {
            {"", "x:", "Cannot make relative to base as base has scheme but this does not"},
            {"", "//h", "Cannot make relative to base as base has authority but this does not"},
            {"", "a", "Cannot make relative to base as base has path but this does not"},
            {"", "/a", "Cannot make relative to base as base has path but this does not"},
            {"", "?q", "Cannot make relative to base as base has query but this does not"},
        };
        for (const Row& row : refused)
            EXPECT_TRUE(throwsExactly<LogicFailure>([&] { empty->makeRelativeTo(make(row.base)); },
                                                    row.result))
                << row.base;
    }
}

TEST(Relativisation, changesNeitherOperand)
{
    const IRI iri = make("http://h/%61/b/../c?q#f");
    const IRI base = make("http://h/a/./d#g");
    EXPECT_EQ(iri.makeRelativeTo(base).toStringUtf8(), "../a/c?q#f");
    EXPECT_EQ(iri.toStringUtf8(), "http://h/%61/b/../c?q#f");
    EXPECT_EQ(iri.getPathUtf8(), "/%61/b/../c");
    EXPECT_EQ(base.toStringUtf8(), "http://h/a/./d#g");
    EXPECT_EQ(iri.makeRelativeTo(iri).toStringUtf8(), "#f");
}

TEST(Relativisation, goesOnFromItsOwnResults)
{
    // A result with dot segments knows of them.
    const IRI up = relative("http://h/a/x", "http://h/a/b/c");
    ASSERT_EQ(up.toStringUtf8(), "../x");
    EXPECT_EQ(up.resolveAgainst(make("http://g/1/2/3")).toStringUtf8(), "http://g/1/x");
    EXPECT_EQ(make("y").resolveAgainst(up).toStringUtf8(), "y");
    const IRI minimal = relative("http://h/a", "http://h/a?q");
    ASSERT_EQ(minimal.toStringUtf8(), "./a");
    EXPECT_EQ(minimal.resolveAgainst(make("http://h/b/c?q")).toStringUtf8(), "http://h/b/a");
    // One that kept the whole does not.
    const IRI whole = relative("http://h/a/../b", "ftp://h/");
    ASSERT_EQ(whole.toStringUtf8(), "http://h/a/../b");
    EXPECT_EQ(whole.resolveAgainst(make("ftp://h/")).toStringUtf8(), "http://h/a/../b");
    EXPECT_EQ(make("http://h/a/../b").resolveAgainst(make("ftp://h/")).toStringUtf8(),
              "http://h/b");
    // One that kept the authority does.
    EXPECT_EQ(
        relative("http://h/a/../b", "http://g/").resolveAgainst(make("http://g/")).toStringUtf8(),
        "http://h/b");

    const IRI both = resolved("x/y", "http://h/a/b").makeRelativeTo(resolved("z", "http://h/a/b"));
    EXPECT_EQ(both.toStringUtf8(), "x/y");
    EXPECT_EQ(both.makeRelativeTo(make("x/z")).toStringUtf8(), "y");
    EXPECT_EQ(make("http://h/a").makeRelativeTo(resolved("", "http://h/a#f")).toStringUtf8(), "");
}

TEST(Relativisation, takesAPathForRootedIfItWasWrittenSo)
{
    // Its slash was an escape, so that it goes on as a path that does not begin with one.
    const IRI iri = resolved("x:%2Fa/b", "");
    ASSERT_EQ(iri.toStringUtf8(), "x:/a/b");
    EXPECT_FALSE(iri.hasAbsolutePath());
    EXPECT_EQ(iri.makeRelativeTo(make("x:c/d")).toStringUtf8(), "..//a/b");
    EXPECT_TRUE(
        throwsExactly<LogicFailure>([&] { iri.makeRelativeTo(make("x:/c/d")); }, alreadyRelative));
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { make("x:/a/b").makeRelativeTo(make("x:c/d")); },
                                            baseIsRelative));
}

TEST(Relativisation, keepsTheFormOfAQuery)
{
    IRIArgs args;
    args.setScheme(std::string("x")).setHost(std::string("h")).setPath(std::string("/a/b"));
    args.appendQueryKeyValuePair(std::string("k&"), std::string("v w"), true, false);
    const IRI iri(args);
    ASSERT_EQ(iri.toStringUtf8(), "x://h/a/b?k%26=v+w");
    EXPECT_EQ(iri.makeRelativeTo(make("y:")).toStringUtf8(), "x://h/a/b?k%26=v+w");
    EXPECT_EQ(iri.makeRelativeTo(make("x://g/")).toStringUtf8(), "//h/a/b?k%26=v+w");
    EXPECT_EQ(iri.makeRelativeTo(make("x://h/a/c")).toStringUtf8(), "b?k%26=v+w");
    EXPECT_EQ(iri.makeRelativeTo(make("x://h/a/b")).toStringUtf8(), "?k%26=v+w");
    // Its decoded text is what it shows.
    EXPECT_EQ(iri.makeRelativeTo(make("x://h/a/b?k%2526=v+w")).toStringUtf8(), "");
}

TEST(Relativisation, letsAFailingTranscoderThrough)
{
    constexpr std::pair<const char*, const char*> failing[] = {
        {"/a", "%C0%80"},  // is the base's path empty?
        {"/%C0%80", "/a"}, // do both name the same?
        {"/a", "/%C0%80"},
        {"http://%C0%80/a", "http://h/a"},
        {"http://h/a", "http://%C0%80@h/a"},
        {"?%C0%80", "?q"},
        {"x:/%C0%80", "y:/a"}, // the path is read before the schemes are compared
        {"/%C0%80", "y:/a"},
        {"http://h/%C0%80?q", "ftp://h"},
    };
    for (const auto& [iri, base] : failing) {
        SCOPED_TRACE(shown({iri, base, nullptr}));
        EXPECT_TRUE(
            throwsExactly<AnyFailure>([&, i = iri, b = base] { relative(i, b); }, invalidUtf8));
    }

    constexpr Row passing[] = {
        {"x:/a", "y:/%C0%80", "x:/a"}, // of the base nothing is read but its scheme
        {"x://%C0%80/a?%C0%80#%C0%80", "y:", "x://%C0%80/a?%C0%80#%C0%80"},
        {"/a#%C0%80", "/b#%C0%80", "a#%C0%80"},
    };
    for (const Row& row : passing) {
        SCOPED_TRACE(shown(row));
        EXPECT_EQ(relative(row.iri, row.base).toStringUtf8(), row.result);
    }
    EXPECT_TRUE(throwsExactly<LogicFailure>([] { relative("%C0%80", "/a"); },
                                            "Cannot make relative to base. Already relative"));
}

TEST(Relativisation, survivesTheSourceOfAnAssignment)
{
    for (const char* const text : {"a/b", "/a?q", "http://u@h:80/a?q#f", "#f"}) {
        SCOPED_TRACE(text);
        IRI source = make(text);
        IRI other = make("x");
        other = std::move(source);
        for (const bool asBase : {false, true})
            try {
                const IRI plain = make("/g#s");
                // NOLINTNEXTLINE(bugprone-use-after-move)
                const IRI result =
                    asBase ? plain.makeRelativeTo(source) : source.makeRelativeTo(plain);
                EXPECT_NE(result.toStringUtf8(), text);
            } catch (const LogicFailure& refusal) {
                EXPECT_EQ(std::string(refusal.what()).rfind("Cannot make relative", 0), 0U);
            } catch (const std::runtime_error& failure) {
                EXPECT_EQ(std::string(failure.what()).rfind("Item not set", 0), 0U)
                    << failure.what();
            }
    }
}

} // namespace foundation::network
