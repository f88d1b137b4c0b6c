// A million segments and a million pairs: read in every form, resolved, relativised, taken apart and
// built; and that reading once more takes no more memory.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include "iri/AllocationCounter.hpp"
#include "iri/ShortTexts.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    // A tenth of them, if there is little time.
    const std::size_t MANY = hasLittleTime() ? 100000 : 1000000;

    std::string repeated(std::string_view piece)
    {
        std::string result;
        result.reserve(piece.size() * MANY);
        for (std::size_t i = 0; i < MANY; ++i)
            result += piece;
        return result;
    }

    // What a million pieces become in each form, between what stands around them.
    struct Form {
        Encoding encoding;
        const char* segment;
        const char* pair;
    };

    const Form forms[] = {
        {Encoding::Decoded, "/é %", "é= &"},
        {Encoding::Iri, "/é%20%", "é=%20&"},
        {Encoding::IriStrict, "/é%20%25", "é=%20&"},
        {Encoding::Ascii, "/%C3%A9%20%", "%C3%A9=%20&"},
        {Encoding::AsciiStrict, "/%C3%A9%20%25", "%C3%A9=%20&"},
    };

    constexpr const char* SEGMENT = "/é%20%";
    constexpr const char* PAIR = "é=%20&";

    // EXPECT_EQ would print both.
    void expectSame(const std::string& found, const std::string& expected)
    {
        EXPECT_TRUE(found == expected) << found.size() << " instead of " << expected.size()
                                       << ", beginning with " << found.substr(0, 40);
    }

} // namespace

TEST(IRIManyComponents, areReadInEveryFormWithoutGrowth)
{
    const IRI iri("http://h" + repeated(SEGMENT) + "?" + repeated(PAIR));
    std::size_t firstRound = 0;
    for (int round = 0; round < 3; ++round) {
        for (const Form& form : forms) {
            SCOPED_TRACE(static_cast<int>(form.encoding));
            expectSame(iri.getPathUtf8(form.encoding), repeated(form.segment));
            expectSame(iri.getQueryUtf8(form.encoding), repeated(form.pair));
        }
        expectSame(iri.toStringUtf8(),
                   "http://h" + repeated(forms[1].segment) + "?" + repeated(forms[1].pair));
        expectSame(iri.toAsciiStringUtf8(true),
                   "http://h" + repeated(forms[4].segment) + "?" + repeated(forms[4].pair));
        if (round == 0)
            firstRound = bytesInUse();
        EXPECT_EQ(bytesInUse(), firstRound);
    }
}

TEST(IRIManyComponents, areResolved)
{
    const IRI base("http://h" + repeated("/a") + "?q");
    expectSame(IRI(std::string("x")).resolveAgainst(base).toStringUtf8(),
               "http://h" + repeated("/a").substr(0, 2 * (MANY - 1)) + "/x");
    expectSame(IRI(repeated("../") + "x").resolveAgainst(base).toStringUtf8(), "http://h/x");
    expectSame(IRI(repeated("./") + "?" + repeated(PAIR)).resolveAgainst(base).toStringUtf8(),
               "http://h" + repeated("/a").substr(0, 2 * (MANY - 1)) + "/?" + repeated(PAIR));
}

TEST(IRIManyComponents, areRelativised)
{
    const IRI base("http://h" + repeated("/a") + "/b");
    const IRI other("http://h" + repeated("/c") + "/d");
    const IRI sibling("http://h" + repeated("/a") + "/d");
    EXPECT_EQ(base.makeRelativeTo(sibling).resolveAgainst(sibling), base);
    expectSame(sibling.makeRelativeTo(base).toStringUtf8(), "d");
    const IRI way = other.makeRelativeTo(base);
    expectSame(way.resolveAgainst(base).toStringUtf8(), other.toStringUtf8());
}

TEST(IRIManyComponents, areTakenApartAndBuilt)
{
    const IRI iri("//h" + repeated(SEGMENT) + "?" + repeated(PAIR));
    IRIArgs args;
    iri.toArgs(args);
    expectSame(IRI(args).toStringUtf8(true), iri.toStringUtf8(true));

    IRIArgs pairs;
    for (std::size_t i = 0; i < MANY; ++i)
        pairs.appendQueryKeyValuePair(std::string("é"), std::string(" "), false, false);
    const std::string query = IRI(pairs).getQueryUtf8();
    std::size_t found = 0;
    for (const iri::QueryPair& pair : iri::QueryPairs(std::string_view(query))) {
        ASSERT_EQ(pair.key, "é");
        ASSERT_EQ(pair.value, " ");
        ++found;
    }
    EXPECT_EQ(found, MANY);
}

} // namespace foundation::network
