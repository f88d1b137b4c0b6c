#include "StringPartsTesting.hpp"

#include <iterator>
#include <utility>

namespace foundation::network::iri::test {
namespace {

    // In both directions, with both operators.
    void expectEqual(const Parts& left, const Parts& right)
    {
        EXPECT_TRUE(left == right);
        EXPECT_FALSE(left != right);
        EXPECT_TRUE(right == left);
        EXPECT_FALSE(right != left);
    }

    void expectDifferent(const Parts& left, const Parts& right)
    {
        EXPECT_FALSE(left == right);
        EXPECT_TRUE(left != right);
        EXPECT_FALSE(right == left);
        EXPECT_TRUE(right != left);
    }

    Parts withHost(std::u32string text, Encoding encoding)
    {
        Parts parts;
        parts.setHost(std::move(text), encoding);
        return parts;
    }

    Parts withPath(std::u32string text, Encoding encoding)
    {
        Parts parts;
        parts.setPath(std::move(text), encoding);
        return parts;
    }

    TEST(StringPartsComparison, equalsItself)
    {
        const Parts fresh;
        expectEqual(fresh, fresh);
        const Parts host = withHost(U"h\u00E9", Encoding::Ascii);
        expectEqual(host, host);
        expectEqual(host, Parts(host));
    }

    TEST(StringPartsComparison, seesEachComponent)
    {
        for (const Component& component : components) {
            SCOPED_TRACE(component.name);
            Parts left;
            for (const Component& each : components)
                each.set(left, U"/same", Encoding::Iri);
            Parts right(left);
            expectEqual(left, right);
            component.set(right, U"/other", Encoding::Iri);
            expectDifferent(left, right);
            component.set(right, U"/Same", Encoding::Iri); // no case is folded
            expectDifferent(left, right);
            component.set(right, U"/sam%65", Encoding::Iri); // and no escape undone
            expectDifferent(left, right);
            component.set(right, U"", Encoding::Iri);
            expectDifferent(left, right);
            component.set(right, U"/same", Encoding::Iri);
            expectEqual(left, right);
        }
    }

    TEST(StringPartsComparison, tellsAbsentFromEmptyFromWithoutText)
    {
        for (const Component& component : components) {
            SCOPED_TRACE(component.name);
            Parts absent;
            const Component& neighbour = component.isPath() ? components[1] : components[2];
            neighbour.set(absent, U"/x", Encoding::Iri);
            Parts empty(absent);
            component.set(empty, U"", Encoding::Iri);
            Parts withoutText(absent);
            component.set(withoutText, U"x", Encoding{5});
            expectDifferent(absent, empty);
            expectDifferent(absent, withoutText);
            expectDifferent(empty, withoutText);
            expectEqual(withoutText, Parts(withoutText));
        }
    }

    TEST(StringPartsComparison, convertsOneSide)
    {
        expectEqual(withHost(U"a b", Encoding::Decoded), withHost(U"a%20b", Encoding::Iri));
        expectEqual(withHost(U"\u00E9", Encoding::Iri), withHost(U"%C3%A9", Encoding::Ascii));
        expectEqual(withHost(U"\u00E9", Encoding::Decoded), withHost(U"%C3%A9", Encoding::Ascii));
        expectEqual(withHost(U"h", Encoding::Decoded), withHost(U"h", Encoding::AsciiStrict));
        expectDifferent(withHost(U"a b", Encoding::Decoded), withHost(U"a%20c", Encoding::Iri));
    }

    // The form is that in which the left side is stored, so the sides may disagree.
    TEST(StringPartsComparison, comparesInTheFormOfTheLeftSide)
    {
        const Parts decoded = withHost(U"A", Encoding::Decoded);
        const Parts iri = withHost(U"%41", Encoding::Iri);
        EXPECT_TRUE(decoded == iri); // "A" and "A"
        EXPECT_FALSE(decoded != iri);
        EXPECT_FALSE(iri == decoded); // "%41" and "A"
        EXPECT_TRUE(iri != decoded);

        const Parts ascii = withHost(U"%c3%a9", Encoding::Ascii);
        const Parts shown = withHost(U"\u00E9", Encoding::Iri);
        EXPECT_TRUE(shown == ascii);  // the character twice
        EXPECT_FALSE(ascii == shown); // "%c3%a9" and "%C3%A9"
        EXPECT_TRUE(ascii != shown);
    }

    // The neighbours of a path decide how it is converted; they are not compared with it.
    TEST(StringPartsComparison, leavesContextsOut)
    {
        const Parts alone = withPath(U"a:b", Encoding::Decoded);
        Parts behindScheme(alone);
        behindScheme.setSchemePresent(true);
        expectEqual(alone, behindScheme);
        Parts shown = withPath(U"a:b", Encoding::Iri);
        EXPECT_TRUE(shown == behindScheme);
        EXPECT_FALSE(shown == alone); // whose IRI form is "a%3Ab"

        Parts form;
        form.setQuery(U"a", Encoding::Decoded, true);
        Parts plain;
        plain.setQuery(U"a", Encoding::Decoded, false);
        expectEqual(form, plain);
    }

    TEST(StringPartsComparison, takesEmptyOnesForEqual)
    {
        const Parts fresh;
        const Parts emptyPath = withPath(U"", Encoding::Iri);
        const Parts emptyDecodedPath = withPath(U"", Encoding::Decoded);
        expectEqual(fresh, Parts());
        expectEqual(fresh, emptyPath); // although only one has a path
        expectEqual(emptyPath, emptyDecodedPath);
        expectDifferent(fresh, withHost(U"", Encoding::Iri));
        expectDifferent(emptyPath, withHost(U"", Encoding::Iri));
    }

    // Where the components agree and only one side is empty, both operators answer true.
    TEST(StringPartsComparison, testsEmptinessByItselfOnlyForInequality)
    {
        const Parts empty = withPath(U"", Encoding::Iri);
        Parts full = withPath(U"x", Encoding::Iri);
        full.setPath(U"", Encoding::Iri);
        ASSERT_TRUE(empty.isEmpty());
        ASSERT_FALSE(full.isEmpty());
        EXPECT_TRUE(empty == full);
        EXPECT_TRUE(full == empty);
        EXPECT_TRUE(empty != full);
        EXPECT_TRUE(full != empty);
        expectEqual(full, Parts(full));
    }

    TEST(StringPartsComparison, comparesWhatWasMovedOut)
    {
        Parts source = withHost(U"h", Encoding::Iri);
        const Parts taken(std::move(source));
        expectDifferent(source, taken); // NOLINT(bugprone-use-after-move)
        expectEqual(source, withHost(U"", Encoding{5}));
        expectDifferent(source, Parts());
    }

    TEST(StringPartsComparison, failsWhereTheRightSideCannotBeConverted)
    {
        constexpr const char* BAD_UTF8 =
            "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";
        const Parts good = withHost(U"h", Encoding::Decoded);
        const Parts bad = withHost(U"%C0%80", Encoding::Iri);
        for (int attempt = 0; attempt < 2; ++attempt) {
            expectFailure<std::exception>([&] { static_cast<void>(good == bad); }, BAD_UTF8);
            expectFailure<std::exception>([&] { static_cast<void>(good != bad); }, BAD_UTF8);
        }
        EXPECT_FALSE(bad == good); // which needs no more than the IRI form of "h"
        EXPECT_TRUE(bad != good);
        expectEqual(bad, Parts(bad));
    }

    // User information, host, path, query, fragment.
    TEST(StringPartsComparison, endsAtTheFirstDifference)
    {
        constexpr std::size_t COUNT = std::size(components);
        for (std::size_t different = 0; different < COUNT; ++different) {
            for (std::size_t bad = 0; bad < COUNT; ++bad) {
                if (bad == different)
                    continue;
                Parts left, right;
                for (std::size_t i = 0; i < COUNT; ++i) {
                    components[i].set(left, U"/a", Encoding::Decoded);
                    components[i].set(right,
                                      i == different ? U"/b"
                                      : i == bad     ? U"%C0%80"
                                                     : U"/a",
                                      Encoding::Iri);
                }
                if (different < bad) {
                    EXPECT_FALSE(left == right);
                    EXPECT_TRUE(left != right);
                } else {
                    EXPECT_THROW(static_cast<void>(left == right), std::exception);
                    EXPECT_THROW(static_cast<void>(left != right), std::exception);
                }
            }
        }
    }

    // What the comparison converted, is kept.
    TEST(StringPartsComparison, keepsTheFormsThatItMade)
    {
        const Parts left = withHost(U"a b", Encoding::Decoded);
        const Parts right = withHost(U"a%20b", Encoding::Iri);
        EXPECT_TRUE(left == right);
        const std::u32string* text = &right.getHost(Encoding::Decoded);
        EXPECT_TRUE(left == right);
        EXPECT_EQ(&right.getHost(Encoding::Decoded), text);
    }

} // namespace
} // namespace foundation::network::iri::test
