#include "build/BagGenerator.hpp"
#include "build/NaiveBuilt.hpp"
#include "build/TwinBag.hpp"

#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

// What generated bags build, against what naive ones build.
namespace foundation::network::tests {
namespace {

    using iri::Encoding;

    // Some components, mostly such that go together.
    TwinBag generatedBag(BagGenerator& generator)
    {
        TwinBag bag;
        const bool hasHost = generator.oneIn(2);
        const auto maySet = [&](Field field, bool isLikely) {
            if (isLikely ? generator.oneIn(2) : generator.oneIn(16))
                bag.set(field, generator.textFor(field));
        };
        maySet(SCHEME, true);
        if (hasHost)
            bag.set(HOST, generator.textFor(HOST));
        maySet(USER_INFO, hasHost);
        if (hasHost ? generator.oneIn(2) : generator.oneIn(16)) {
            const auto number = static_cast<unsigned short>(generator.below(65536));
            bag.library.setPort(number);
            bag.naive.setPort(number);
        }
        maySet(PATH, true);
        if (!hasHost && generator.oneIn(2)) // relative ones
            bag.set(PATH, generator.text());
        if (generator.oneIn(3)) {
            const std::string key = "k" + toUtf8(generator.characters());
            const std::string value = toUtf8(generator.characters());
            const bool formEncoded = generator.oneIn(2), semicolonSeparator = generator.oneIn(2);
            bag.library.appendQueryKeyValuePair(key, value, formEncoded, semicolonSeparator);
            bag.naive.append(key, value, formEncoded, semicolonSeparator);
        }
        if (generator.oneIn(3))
            bag.set(QUERY, generator.text());
        maySet(FRAGMENT, true);
        return bag;
    }

    struct Built {
        explicit Built(const TwinBag& bag)
            : value(bag.library)
            , naive(bag.naive)
        {
        }

        IRI value;
        NaiveBuilt naive;
    };

    // Nothing, if the bag is refused.
    std::optional<Built> built(const TwinBag& bag)
    {
        std::optional<Built> result;
        failureOf([&] { result.emplace(bag); });
        return result;
    }

    // The value of the text that another shows, if it shows one and that can be parsed.
    std::optional<IRI> parsedAgain(const IRI& iri)
    {
        std::optional<IRI> result;
        failureOf([&] { result.emplace(iri.toStringUtf8()); });
        return result;
    }

    // A bag that mostly differs from another in one thing only.
    TwinBag generatedNeighbour(BagGenerator& generator, const TwinBag& bag)
    {
        if (generator.oneIn(4))
            return generatedBag(generator);
        TwinBag result = bag;
        if (generator.oneIn(3)) {
            const auto field = static_cast<Field>(generator.below(fieldCount));
            result.set(field, generator.textFor(field));
        }
        // A query that is shown in another way.
        if (generator.oneIn(3) && bag.naive.texts[QUERY]) {
            const bool formEncoded = generator.oneIn(4);
            result.library.appendQueryKeyValuePair("+", "", formEncoded, false);
            result.naive.append(std::string("+"), std::string(), formEncoded, false);
            result.set(QUERY, *bag.naive.texts[QUERY]);
        }
        return result;
    }

    void expectBuiltComparison(const Built& left, const Built& right)
    {
        const bool areEqual = left.naive.equals(right.naive);
        EXPECT_EQ(left.value == right.value, areEqual);
        EXPECT_EQ(left.value != right.value, !areEqual);
        EXPECT_EQ(left.value < right.value, left.naive.isLess(right.naive));
    }

    // Scheme and port count, and then the texts.
    void expectComparisonWithParsed(const IRI& parsed, const Built& built)
    {
        const Text parsedText = fromUtf8(parsed.toStringUtf8());
        const Text builtText = built.naive.text(Encoding::Iri);
        const auto schemeOf = [](const IRI& iri) {
            return iri.hasScheme() ? iri.getScheme() : u":";
        };
        const auto portOf = [](const IRI& iri) { return iri.hasPort() ? iri.getPortNumber() : -1; };
        const bool areEqual = parsedText == builtText && schemeOf(parsed) == schemeOf(built.value)
                              && portOf(parsed) == portOf(built.value);
        EXPECT_EQ(parsed == built.value, areEqual);
        EXPECT_EQ(built.value == parsed, areEqual);
        EXPECT_EQ(parsed != built.value, !areEqual);
        EXPECT_EQ(built.value != parsed, !areEqual);
        EXPECT_EQ(parsed < built.value, parsedText < builtText);
        EXPECT_EQ(built.value < parsed, builtText < parsedText);
        EXPECT_EQ(parsed.hashValue() == built.value.hashValue(), parsedText == builtText);
    }

    TEST(BuildingProperty, ofGeneratedBagsIsThatOfNaiveOnes)
    {
        constexpr std::uint32_t SEED = 33;
        BagGenerator generator(SEED);
        Outcomes outcomes;
        const std::size_t cases = caseCount(100000);
        for (std::size_t i = 0; i < cases; ++i) {
            const TwinBag bag = generatedBag(generator);
            // There is much to be read: some of the bags are looked at in full.
            const Depth depth = i % 10 == 0 ? Depth::EVERYTHING : Depth::TEXTS;
            ASSERT_TRUE(buildAlike(bag, depth, outcomes)) << "seed " << SEED << ", case " << i;
        }
        for (const char* outcome :
             {"done", "a text", "Malformed scheme", "User Info requires a host",
              "Port requires a host", "Path cannot be relative if aut",
              "Invalid UTF-32 code point U+0x", "Item not set: Host: Host (in g",
              "Item not set: Query", "No scheme", "No port"})
            EXPECT_GT(outcomes[outcome], caseCount(100)) << outcome;
    }

    TEST(BuildingProperty, generatedValuesAreComparedAsNaiveOnes)
    {
        constexpr std::uint32_t SEED = 17;
        BagGenerator generator(SEED);
        std::size_t equal = 0, different = 0, parsedOnes = 0, reread = 0;
        const std::size_t cases = caseCount(50000);
        for (std::size_t i = 0; i < cases && !testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(SEED) + ", case " + std::to_string(i));
            const TwinBag bag = generatedBag(generator);
            const TwinBag neighbour = generatedNeighbour(generator, bag);
            const std::optional<Built> left = built(bag), right = built(neighbour);
            if (!left || !right)
                continue;
            expectBuiltComparison(*left, *right);
            ++(left->naive.equals(right->naive) ? equal : different);
            const std::optional<IRI> parsed = parsedAgain(left->value);
            if (!parsed)
                continue;
            expectComparisonWithParsed(*parsed, *left);
            ++parsedOnes;
            reread += *parsed == left->value ? 1U : 0U;
            if (!failureOf([&] { right->naive.hash(); }))
                expectComparisonWithParsed(*parsed, *right);
        }
        for (const std::size_t count : {equal, different, parsedOnes, reread})
            EXPECT_GT(count, caseCount(1000));
        EXPECT_GT(parsedOnes - reread, caseCount(20)); // a path that reads as host and port
    }

    // A built value is taken apart and put together again, as the naive one is.
    TEST(BuildingProperty, generatedValuesAreTakenApartAsNaiveOnes)
    {
        constexpr std::uint32_t SEED = 31;
        BagGenerator generator(SEED);
        Outcomes outcomes;
        const std::size_t cases = caseCount(20000);
        for (std::size_t i = 0; i < cases; ++i) {
            const std::optional<Built> source = built(generatedBag(generator));
            if (!source)
                continue;
            TwinBag target;
            if (generator.oneIn(2))
                target = generatedBag(generator);
            source->value.toArgs(target.library);
            source->naive.components().toBag(target.naive);
            ASSERT_TRUE(buildAlike(target, Depth::TEXTS, outcomes))
                << "seed " << SEED << ", case " << i;
        }
        EXPECT_GT(outcomes["done"], caseCount(1000));
    }

} // namespace
} // namespace foundation::network::tests
