#include <foundation/network/IRI.hpp>

#include "build/BagTesting.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;

} // namespace

TEST(BuiltHash, isThatOfTheText)
{
    for (const char* text : {"s://u@h:8/p?q#f", "a%3Ab", "%2541", "?", "#", "//", "é:😀"}) {
        SCOPED_TRACE(text);
        const IRI value = built(text);
        EXPECT_EQ(value.hashValue(), naiveHash(text));
        EXPECT_EQ(value.hashValue(), naiveHash(text));
        EXPECT_EQ(std::hash<IRI>()(value), parsed(text).hashValue());
    }
    EXPECT_EQ(parsed("b%41").resolveAgainst(parsed("x:/a")).hashValue(), naiveHash("x:/bA"));
}

// A strict text that is read first changes the plain text, and the hash goes with it.
TEST(BuiltHash, isThatOfTheTextAsItIsShown)
{
    const IRI value(IRIArgs().setUserInfo("%").setHost("h"));
    value.toString(true);
    ASSERT_EQ(value.toStringUtf8(), "//%25@h");
    EXPECT_EQ(value.hashValue(), naiveHash("//%25@h"));
    EXPECT_EQ(IRI(IRIArgs().setUserInfo("%").setHost("h")).hashValue(), naiveHash("//%@h"));
}

TEST(BuiltHash, belongsToTheText)
{
    for (const bool leftIsBuilt : {false, true})
        for (const bool rightIsBuilt : {false, true})
            for (const bool leftIsHashed : {false, true})
                for (const bool rightIsHashed : {false, true}) {
                    const auto make = [](const char* text, bool isBuilt, bool isHashed) {
                        IRI iri = isBuilt ? built(text) : parsed(text);
                        if (isHashed)
                            iri.hashValue();
                        return iri;
                    };
                    const auto left = [&] { return make("x:left", leftIsBuilt, leftIsHashed); };
                    const auto right = [&] { return make("x:right", rightIsBuilt, rightIsHashed); };
                    IRI target = left();
                    const IRI source = right();
                    target = source;
                    EXPECT_EQ(target.hashValue(), naiveHash("x:right"));
                    EXPECT_TRUE(target == source);
                    target = left();
                    EXPECT_EQ(target.hashValue(), naiveHash("x:left"));
                    IRI one = left();
                    IRI two = right();
                    swap(one, two);
                    EXPECT_EQ(one.hashValue(), naiveHash("x:right"));
                    EXPECT_EQ(two.hashValue(), naiveHash("x:left"));
                    const IRI moved(std::move(one));
                    EXPECT_EQ(moved.hashValue(), naiveHash("x:right"));
                    std::vector<IRI> values{right(), left(), right(), left()};
                    std::sort(values.begin(), values.end());
                    for (std::size_t i = 0; i < values.size(); ++i)
                        EXPECT_EQ(values[i].hashValue(), naiveHash(i < 2 ? "x:left" : "x:right"));
                }
}

TEST(BuiltHash, staysWhenTheEmptyValueIsAssigned)
{
    for (const IRI& empty : {IRI(), parsed(""), IRI(IRIArgs())}) {
        IRI hashed = built("x:y");
        hashed.hashValue();
        hashed = empty;
        EXPECT_TRUE(hashed.isEmpty());
        EXPECT_EQ(hashed.hashValue(), naiveHash("x:y"));
        EXPECT_TRUE(hashed == empty);
        hashed = built("x:z");
        EXPECT_EQ(hashed.hashValue(), naiveHash("x:z"));
        IRI fresh = built("x:y");
        fresh = empty;
        EXPECT_EQ(fresh.hashValue(), 0U);
    }
}

} // namespace foundation::network
