#include <foundation/network/IRI.hpp>

#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;

    constexpr std::uint64_t offsetBasis = 0xcbf29ce484222325U;

    IRI make(const std::string& text)
    {
        return IRI(text);
    }

    void expectEqual(const IRI& left, const IRI& right)
    {
        EXPECT_TRUE(left == right);
        EXPECT_TRUE(right == left);
        EXPECT_FALSE(left != right);
        EXPECT_FALSE(right != left);
        EXPECT_FALSE(left < right);
        EXPECT_FALSE(right < left);
        EXPECT_EQ(left.hashValue(), right.hashValue());
    }

    void expectDifferent(const IRI& left, const IRI& right)
    {
        EXPECT_FALSE(left == right);
        EXPECT_FALSE(right == left);
        EXPECT_TRUE(left != right);
        EXPECT_TRUE(right != left);
        EXPECT_NE(left < right, right < left); // parsed values are never unordered but when equal
    }

} // namespace

TEST(IRIComparison, differsInTheLeastThing)
{
    constexpr std::pair<const char*, const char*> pairs[] = {
        {"X://a", "x://a"},
        {"x://A/", "x://a/"},
        {"x://a/%41", "x://a/A"},
        {"x://a/%2f", "x://a/%2F"},
        {"x://a:080/", "x://a:80/"}, // the numbers are the same, the texts are not
        {"x://a:0/", "x://a/"},
        {"http://a:80/", "http://a/"}, // the default port of the scheme
        {"x://a:1", "x://a:2"},
        {"x://a", "x://a/"},
        {"x://a", "x://a?"},
        {"x://a", "x://a#"},
        {"x://a", "x://@a"},
        {"x:a", "a"},
        {"x:", "y:"},
        {"é:", "É:"},
        {"é", "%C3%A9"},
        {"é", "e\u0301"}, // nothing is normalised
        {"", "?"},
        {"", "a"},
        {"a/../b", "b"},
        {"./a", "a"},
    };
    for (const auto& [left, right] : pairs) {
        SCOPED_TRACE(std::string(left) + " and " + right);
        expectDifferent(make(left), make(right));
    }
}

TEST(IRIComparison, isEqualToWhatHasTheSameText)
{
    for (const char* text : {"http://u:p@h:8/a/b?q#f", "x://a:080/", "é://例え/😀?\uE000", "a", "?",
                             "#", "//", "/", "100%"}) {
        SCOPED_TRACE(text);
        expectEqual(make(text), make(text));
        expectEqual(make(text), IRI(utf16(text)));
        const IRI iri = make(text);
        expectEqual(iri, iri);
        expectEqual(iri, IRI(iri)); // NOLINT(performance-unnecessary-copy-initialization)
    }
}

TEST(IRIComparison, allEmptyValuesAreTheSame)
{
    const IRI bare;
    const IRI parsed = make("");
    IRI cleared = make("x:y");
    cleared = IRI();
    expectEqual(bare, parsed);
    expectEqual(bare, bare);
    expectEqual(cleared, parsed);
    EXPECT_EQ(bare.hashValue(), 0U);
    EXPECT_EQ(parsed.hashValue(), 0U);
    expectDifferent(bare, make("a"));
    EXPECT_TRUE(bare < make("!"));
    EXPECT_FALSE(make("!") < bare);
}

TEST(IRIComparison, doesNotDependOnWhatWasReadBefore)
{
    const IRI left = make("http://例え/%41?%ＡＢ#é");
    const IRI right = make("http://例え/%41?%ＡＢ#é");
    left.toAsciiString(true);
    left.getPath(IRI::Encoding::Decoded);
    left.hashValue();
    expectEqual(left, right);
    expectDifferent(left, make("http://例え/A?%ＡＢ#é"));
}

TEST(IRIComparison, sortsByCodePoint)
{
    // Ascending. As UTF-16 U+FFEF would come behind U+10000; "a" is a prefix of what follows it.
    constexpr const char* ascending[] = {
        "",   "#",   "/",  "//h", "?", "A:", "Z",  "a",      "a#",         "a/",
        "a:", "a:b", "a?", "aa",  "b", "é",  "例", "\uFFEF", "\U00010000", "\U000EFFFD",
    };
    for (const auto* i = std::begin(ascending); i != std::end(ascending); ++i)
        for (const auto* k = std::begin(ascending); k != std::end(ascending); ++k) {
            SCOPED_TRACE(std::string(*i) + " < " + *k);
            EXPECT_EQ(make(*i) < make(*k), i < k);
        }
}

TEST(IRIComparison, ofWhatWasMovedFromByAssignmentStillSeesTheFlags)
{
    IRI source = make("x://h:8/");
    IRI target;
    target = std::move(source);
    // NOLINTBEGIN(bugprone-use-after-move)
    EXPECT_FALSE(source == IRI()); // not empty, though its text is
    EXPECT_TRUE(source != IRI());
    EXPECT_FALSE(source == target);
    // NOLINTEND(bugprone-use-after-move)
}

TEST(IRIHash, isFnv1aOverTheCodePointsOfTheText)
{
    for (const char* text : {"a", "?", "http://u:p@h:8/a/b?q#f", "HTTP://H/%7e",
                             "é://例え/😀?\uE000", "\U000EFFFD", "ÿ/\u0100/\u00A0"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(make(text).hashValue(), naiveHash(text));
        EXPECT_EQ(IRI(utf16(text)).hashValue(), naiveHash(text));
    }
}

TEST(IRIHash, isTheSameAtEachCall)
{
    const IRI iri = make("http://h/");
    const std::uint64_t hash = iri.hashValue();
    EXPECT_EQ(iri.hashValue(), hash);
    EXPECT_EQ(IRI(iri).hashValue(), hash);
    EXPECT_EQ(std::hash<IRI>()(iri), hash);
}

TEST(IRIHash, goesWithTheValueIntoCopiesMovesAndSwaps)
{
    for (const bool leftIsHashed : {false, true})
        for (const bool rightIsHashed : {false, true}) {
            SCOPED_TRACE(testing::Message() << leftIsHashed << rightIsHashed);
            const auto left = [&] {
                IRI iri = make("x:left");
                if (leftIsHashed)
                    iri.hashValue();
                return iri;
            };
            const auto right = [&] {
                IRI iri = make("x:right");
                if (rightIsHashed)
                    iri.hashValue();
                return iri;
            };
            IRI target = left();
            const IRI source = right();
            target = source;
            EXPECT_EQ(target.hashValue(), naiveHash("x:right"));
            target = left();
            target = right();
            EXPECT_EQ(target.hashValue(), naiveHash("x:right"));
            IRI one = left();
            IRI two = right();
            one.swap(two);
            EXPECT_EQ(one.hashValue(), naiveHash("x:right"));
            EXPECT_EQ(two.hashValue(), naiveHash("x:left"));
            const IRI moved(std::move(one));
            EXPECT_EQ(moved.hashValue(), naiveHash("x:right"));
        }
}

TEST(IRIHash, onceComputedSurvivesTheAssignmentOfAnEmptyValue)
{
    const IRI empty;
    IRI iri = make("x:y");
    const std::uint64_t hash = iri.hashValue();
    iri = empty;
    EXPECT_TRUE(iri.isEmpty());
    EXPECT_EQ(iri.hashValue(), hash);
    iri = IRI(); // both are empty now
    EXPECT_EQ(iri.hashValue(), hash);
    EXPECT_TRUE(iri == empty);

    IRI other = make("x:y");
    other.hashValue();
    other = IRI();
    EXPECT_EQ(other.hashValue(), hash);
}

// Comparing texts counts as computing their hashes, whether or not it needs them.
TEST(IRIHash, ofWhatWasComparedSurvivesTheAssignmentOfAnEmptyValue)
{
    for (const char* text : {"x:y", "x:z", "x:a/long/er/text"}) {
        IRI left = make("x:y");
        IRI right = make(text);
        EXPECT_EQ(left == right, text == std::string("x:y"));
        left = IRI();
        const IRI moved(std::move(right));
        EXPECT_EQ(left.hashValue(), naiveHash("x:y"));
        EXPECT_EQ(right.hashValue(), naiveHash(text)); // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(moved.hashValue(), naiveHash(text));
    }
    IRI left = make("x:y");
    EXPECT_FALSE(left == make("z:y")); // the schemes differ: no text was looked at
    left = IRI();
    EXPECT_EQ(left.hashValue(), 0U);
}

// Two sets of values go through the same steps at random. In one of them the hashes of what was
// compared are asked for at once; nobody may see a difference.
TEST(IRIHash, doesNotTellWhenItWasComputed)
{
    constexpr std::uint32_t SEED = 20240613;
    constexpr std::size_t COUNT = 4;
    const char* const texts[] = {"x:y", "x:y", "x:z", "z:y", "x://h:1/a", "x://h:01/a", "", "é:例"};
    std::mt19937 random(SEED);
    const auto below = [&random](std::size_t limit) { return random() % limit; };

    for (int round = 0; round < 4000; ++round) {
        std::vector<IRI> lazy(COUNT);
        std::vector<IRI> eager(COUNT);
        for (std::size_t i = 0; i < COUNT; ++i) {
            const std::string text = texts[below(std::size(texts))];
            lazy[i] = make(text);
            eager[i] = make(text);
        }
        std::string steps;
        for (int step = 0; step < 12; ++step) {
            const std::size_t one = below(COUNT);
            const std::size_t two = below(COUNT);
            const std::size_t kind = below(8);
            steps += " " + std::to_string(kind) + ":" + std::to_string(one) + std::to_string(two);
            SCOPED_TRACE(steps);
            const auto changeBoth = [&](auto change) {
                change(lazy[one], lazy[two]);
                change(eager[one], eager[two]);
            };
            const std::string text = texts[below(std::size(texts))];
            switch (kind) {
            case 0:
                changeBoth([](IRI& left, IRI& right) { left = right; });
                break;
            case 1:
                changeBoth([](IRI& left, IRI& right) { left = std::move(right); });
                break;
            case 2:
                changeBoth([](IRI& left, IRI& right) { left.swap(right); });
                break;
            case 3:
                changeBoth([](IRI& left, IRI& right) {
                    IRI moved(std::move(left));
                    right = std::move(moved);
                });
                break;
            case 4:
                changeBoth([&](IRI& left, IRI&) { left = make(text); });
                break;
            case 5:
                changeBoth([](IRI& left, IRI& right) {
                    const IRI copy(right);
                    left = IRI();
                    left = copy;
                });
                break;
            case 6:
                ASSERT_EQ(lazy[one].hashValue(), eager[one].hashValue());
                break;
            default: {
                const bool areEqual = lazy[one] == lazy[two];
                ASSERT_EQ(areEqual, eager[one] == eager[two]);
                ASSERT_EQ(lazy[one] != lazy[two], !areEqual);
                const auto schemeOf = [](const IRI& iri) {
                    return iri.hasScheme() ? iri.getSchemeUtf8() : std::string();
                };
                const auto portOf = [](const IRI& iri) {
                    return iri.hasPort() ? int{iri.getPortNumber()} : -1;
                };
                const IRI& left = eager[one];
                const IRI& right = eager[two];
                const bool textsAreCompared =
                    !left.isEmpty() && !right.isEmpty() && left.hasScheme() == right.hasScheme()
                    && schemeOf(left) == schemeOf(right) && portOf(left) == portOf(right);
                if (textsAreCompared) {
                    left.hashValue();
                    right.hashValue();
                }
                break;
            }
            }
        }
        for (std::size_t i = 0; i < COUNT; ++i) {
            lazy[i] = IRI();
            eager[i] = IRI();
            ASSERT_EQ(lazy[i].hashValue(), eager[i].hashValue()) << steps;
        }
    }
}

TEST(IRIHash, neverComputedIsZeroAfterTheAssignmentOfAnEmptyValue)
{
    IRI iri = make("x:y");
    iri = IRI();
    EXPECT_EQ(iri.hashValue(), 0U);
}

// It was computed for the original, not for the copy, which may still compute one.
TEST(IRIHash, onlyTakenOverIsZeroAfterTheAssignmentOfAnEmptyValue)
{
    const IRI original = make("x:y");
    original.hashValue();
    IRI copy(original);
    copy = IRI();
    EXPECT_EQ(copy.hashValue(), 0U);
}

TEST(IRIHash, ofWhatIsMadeFromAnEmptiedValueIsZero)
{
    IRI iri = make("x:y");
    const std::uint64_t hash = iri.hashValue();
    iri = IRI();
    IRI copy(iri);
    EXPECT_EQ(copy.hashValue(), 0U);
    EXPECT_EQ(iri.hashValue(), hash);
    const IRI moved(std::move(iri));
    EXPECT_EQ(moved.hashValue(), 0U);
}

TEST(IRIHash, ofAnEmptiedValueThatTakesAnotherTextIsThatOfTheText)
{
    for (const bool isHashed : {false, true}) {
        IRI source = make("x:z");
        if (isHashed)
            source.hashValue();
        IRI iri = make("x:y");
        iri.hashValue();
        iri = IRI();
        iri = source;
        EXPECT_EQ(iri.hashValue(), naiveHash("x:z"));
        iri = IRI();
        iri = std::move(source);
        EXPECT_EQ(iri.hashValue(), naiveHash("x:z"));
        IRI other = make("x:w");
        iri = IRI();
        iri.swap(other);
        EXPECT_EQ(iri.hashValue(), naiveHash("x:w"));
    }
}

TEST(IRIHash, ofWhatWasMovedFromByConstructionIsTheOldOneIfItWasComputed)
{
    IRI hashed = make("x:y");
    hashed.hashValue();
    const IRI target(std::move(hashed));
    EXPECT_EQ(hashed.hashValue(), naiveHash("x:y")); // NOLINT(bugprone-use-after-move)

    IRI unhashed = make("x:y");
    const IRI other(std::move(unhashed));
    EXPECT_EQ(unhashed.hashValue(), 0U); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(other.hashValue(), naiveHash("x:y"));
}

TEST(IRIHash, ofWhatWasMovedFromByAssignmentIsThatOfNoText)
{
    IRI source = make("x:y");
    IRI target;
    target = std::move(source);
    EXPECT_EQ(source.hashValue(), offsetBasis); // NOLINT(bugprone-use-after-move)
}

TEST(IRIComparison, servesTheContainers)
{
    const std::vector<std::string> texts{"b", "a:c", "é", "a", "例", "", "a", "?", "b"};
    std::vector<IRI> iris;
    for (const std::string& text : texts)
        iris.push_back(make(text));

    const std::unordered_set<IRI> hashed(iris.begin(), iris.end());
    EXPECT_EQ(hashed.size(), 7U);
    EXPECT_TRUE(hashed.contains(make("例")));
    EXPECT_FALSE(hashed.contains(make("%E4%BE%8B")));

    std::unordered_map<IRI, int> counts;
    std::map<IRI, int> sortedCounts;
    for (const IRI& iri : iris) {
        ++counts[iri];
        ++sortedCounts[iri];
    }
    EXPECT_EQ(counts[make("b")], 2);
    EXPECT_EQ(sortedCounts[make("a")], 2);
    EXPECT_EQ(sortedCounts[make("é")], 1);

    std::sort(iris.begin(), iris.end());
    std::vector<std::string> sorted;
    for (const IRI& iri : iris)
        sorted.push_back(iri.toStringUtf8());
    EXPECT_EQ(sorted, (std::vector<std::string>{"", "?", "a", "a", "a:c", "b", "b", "é", "例"}));
    EXPECT_EQ(std::set<IRI>(iris.begin(), iris.end()).size(), 7U);
}

} // namespace foundation::network
