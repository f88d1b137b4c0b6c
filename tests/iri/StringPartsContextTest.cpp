#include "StringPartsTesting.hpp"

namespace foundation::network::iri::test {
namespace {

    // A path that stands alone must not look as if it began with a scheme (RFC 3986, 4.2).
    constexpr const char32_t* PATH = U"a:b/c:d";
    constexpr const char32_t* ALONE = U"a%3Ab/c:d";

    void expectPath(const Parts& parts, const char32_t* iri)
    {
        EXPECT_EQ(parts.getPath(Encoding::Iri), iri);
        EXPECT_EQ(parts.getPath(Encoding::Ascii), iri);
        EXPECT_EQ(parts.getPath(Encoding::Decoded), PATH);
    }

    TEST(StringPartsContext, ofAPathIsClearAtFirst)
    {
        Parts parts;
        parts.setPath(PATH, Encoding::Decoded);
        expectPath(parts, ALONE);
    }

    TEST(StringPartsContext, changesWithTheScheme)
    {
        Parts parts;
        parts.setSchemePresent(true); // there is no path that could remember it
        parts.setPath(PATH, Encoding::Decoded);
        expectPath(parts, ALONE);
        parts.setSchemePresent(true);
        expectPath(parts, PATH);
        parts.setSchemePresent(true);
        expectPath(parts, PATH);
        parts.setSchemePresent(false);
        expectPath(parts, ALONE);
    }

    TEST(StringPartsContext, losesTheSchemeWithTheNextPath)
    {
        Parts parts;
        parts.setPath(PATH, Encoding::Decoded);
        parts.setSchemePresent(true);
        parts.setPath(PATH, Encoding::Decoded);
        expectPath(parts, ALONE);
    }

    TEST(StringPartsContext, neverTouchesTheEmptyFlag)
    {
        Parts parts;
        parts.setSchemePresent(true);
        EXPECT_TRUE(parts.isEmpty());
        expectNotSet(parts, components[2], Encoding::Iri);
        parts.setPath(U"", Encoding::Iri);
        parts.setSchemePresent(true);
        EXPECT_TRUE(parts.isEmpty());
        parts.setPath(U"x", Encoding::Iri);
        parts.setSchemePresent(false);
        EXPECT_FALSE(parts.isEmpty());
    }

    // The host and the user information count as soon as they are present, be it empty or without a
    // text, whether they come before the path or after it.
    TEST(StringPartsContext, knowsTheAuthority)
    {
        for (const char32_t* text : {U"x", U""}) {
            for (const Encoding encoding : encodings) {
                for (const bool isHost : {false, true}) {
                    const auto setNeighbour = [&](Parts& parts) {
                        if (isHost)
                            parts.setHost(text, encoding);
                        else
                            parts.setUserInfo(text, encoding);
                    };
                    Parts before;
                    setNeighbour(before);
                    before.setPath(PATH, Encoding::Decoded);
                    expectPath(before, PATH);

                    Parts after;
                    after.setPath(PATH, Encoding::Decoded);
                    expectPath(after, ALONE); // forms made so far are made anew
                    setNeighbour(after);
                    expectPath(after, PATH);
                    after.setSchemePresent(false); // keeps what it knows of the others
                    expectPath(after, PATH);
                }
            }
        }
    }

    TEST(StringPartsContext, knowsNothingOfQueryAndFragment)
    {
        Parts parts;
        parts.setPath(PATH, Encoding::Decoded);
        parts.setQuery(U"q", Encoding::Iri, true);
        parts.setFragment(U"f", Encoding::Iri);
        expectPath(parts, ALONE);
    }

    TEST(StringPartsContext, servesTheWayFromAsciiToo)
    {
        Parts parts;
        parts.setPath(U"a%3Ab/c%3Ad", Encoding::Ascii);
        EXPECT_EQ(parts.getPath(Encoding::Iri), ALONE);
        EXPECT_EQ(parts.getPath(Encoding::Decoded), PATH);
        parts.setSchemePresent(true);
        EXPECT_EQ(parts.getPath(Encoding::Iri), PATH);
        EXPECT_EQ(parts.getPath(Encoding::Decoded), PATH);
        EXPECT_EQ(parts.getPath(Encoding::Ascii), U"a%3Ab/c%3Ad"); // as it was stored
    }

    TEST(StringPartsContext, leavesAStoredIriFormAlone)
    {
        Parts parts;
        parts.setPath(PATH, Encoding::Iri);
        expectPath(parts, PATH);
        parts.setSchemePresent(true);
        expectPath(parts, PATH);
        parts.setSchemePresent(false);
        expectPath(parts, PATH);
    }

    TEST(StringPartsContext, travelsWithThePath)
    {
        Parts parts;
        parts.setPath(PATH, Encoding::Decoded);
        parts.setSchemePresent(true);

        const Parts copy(parts);
        expectPath(copy, PATH);
        Parts assigned;
        assigned = copy;
        expectPath(assigned, PATH);
        Parts moved(std::move(assigned));
        expectPath(moved, PATH);
        Parts other;
        other.setPath(PATH, Encoding::Decoded);
        other.swap(moved);
        expectPath(other, PATH);
        expectPath(moved, ALONE);
        moved = std::move(other);
        expectPath(moved, PATH);
    }

    // A host that was moved out is present all the same.
    TEST(StringPartsContext, knowsAHostWhoseTextWasMovedOut)
    {
        Parts parts;
        parts.setHost(U"h", Encoding::Iri);
        const Parts taken(std::move(parts));
        parts.setPath(PATH, Encoding::Decoded); // NOLINT(bugprone-use-after-move)
        expectPath(parts, PATH);
        parts.reset();
        parts.setPath(PATH, Encoding::Decoded);
        expectPath(parts, ALONE);
    }

    struct Form {
        const char32_t* text;
        Encoding stored;
        bool formEncoded;
        const char32_t *decoded, *iri, *ascii;
    };
    constexpr Form forms[] = {
        {U"a b", Encoding::Decoded, true, U"a b", U"a+b", U"a+b"},
        {U"a b", Encoding::Decoded, false, U"a b", U"a%20b", U"a%20b"},
        {U"a+b%26c", Encoding::Iri, true, U"a+b%26c", U"a+b%26c", U"a+b%26c"},
        {U"a+b%26c", Encoding::Iri, false, U"a+b&c", U"a+b%26c", U"a+b%26c"},
        {U"a%20b%41", Encoding::Ascii, true, U"a%20b%41", U"a%20b%41", U"a%20b%41"},
        {U"a%20b%41", Encoding::Ascii, false, U"a bA", U"a%20bA", U"a%20b%41"},
        {U"%41\u00E9", Encoding::Decoded, true, U"%41\u00E9", U"%41\u00E9", U"%41%C3%A9"},
        {U"%41\u00E9", Encoding::Decoded, false, U"%41\u00E9", U"%2541\u00E9", U"%2541%C3%A9"},
    };

    TEST(StringPartsContext, ofAQueryTellsWhetherItWasPutTogetherFromPairs)
    {
        for (const Form& row : forms) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(row.text)));
            SCOPED_TRACE(row.formEncoded);
            Parts parts;
            parts.setQuery(U"other", Encoding::Iri, !row.formEncoded); // leaves nothing behind
            parts.setQuery(row.text, row.stored, row.formEncoded);
            for (const Parts& each : {parts, Parts(parts)}) {
                EXPECT_EQ(each.getQuery(Encoding::Decoded), row.decoded);
                EXPECT_EQ(each.getQuery(Encoding::Iri), row.iri);
                EXPECT_EQ(each.getQuery(Encoding::Ascii), row.ascii);
            }
        }
    }

} // namespace
} // namespace foundation::network::iri::test
