#include "reference/Cases.hpp"
#include "reference/HandPicked.hpp"
#include "reference/SpecimenGenerator.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;

    // A flaw shows in many cases; the first few say it.
    constexpr std::size_t maximumFailures = 20;

    class ReferenceModel : public testing::Test {
    protected:
        bool isDone() const { return failures_ >= maximumFailures; }

        void expect(const testing::AssertionResult& result)
        {
            if (!result && ++failures_ <= maximumFailures)
                ADD_FAILURE() << result.message();
        }

        // Compares the outcome; gives it on if there is a value to go on with.
        void expect(Outcome& outcome, std::size_t readings, Random& random)
        {
            expect(outcome.alike);
            if (outcome.result)
                expect(readsAlike(*outcome.result, readings, random));
        }

    private:
        std::size_t failures_ = 0;
    };

    constexpr std::size_t readingsOfAPair = 6;
    constexpr std::size_t readingsOfACase = 8;

} // namespace

TEST_F(ReferenceModel, agreesOnEachHandPickedOne)
{
    Random random(1);
    for (const char* const text : handPicked) {
        Specimen specimen = parsedSpecimen(text);
        expect(readsAlike(specimen, 200, random));
    }
}

TEST_F(ReferenceModel, agreesOnEveryPairOfHandPickedOnes)
{
    std::vector<Specimen> specimens;
    for (const char* const text : handPicked)
        specimens.push_back(parsedSpecimen(text));

    Random random(2);
    for (Specimen& left : specimens)
        for (Specimen& right : specimens) {
            Outcome resolved = resolve(left, right);
            expect(resolved, readingsOfAPair, random);
            Outcome relative = relativise(left, right);
            expect(relative, readingsOfAPair, random);
            if (relative.result) {
                Outcome back = resolve(*relative.result, right);
                expect(back, readingsOfAPair, random);
            }
            if (isDone())
                return;
        }
}

TEST_F(ReferenceModel, agreesOnGeneratedReferencesAndBases)
{
    const std::size_t cases = testCases();
    for (std::size_t i = 0; i < cases && !isDone(); ++i) {
        SCOPED_TRACE(i);
        Random random(i);
        auto [reference, base] = relatedSpecimens(random);
        // What was read before must make no difference, or that which the model has too.
        if (below(4, random) == 0) {
            expect(readsAlike(reference, readingsOfACase, random));
            expect(readsAlike(base, readingsOfACase, random));
        }
        Outcome resolved = resolve(reference, base);
        expect(resolved, readingsOfACase, random);
        if (below(4, random) > 0 || !resolved.result)
            continue;
        // Results go on as what they may be.
        Outcome asReference = resolve(*resolved.result, base);
        expect(asReference, readingsOfACase, random);
        Outcome asBase = resolve(reference, *resolved.result);
        expect(asBase, readingsOfACase, random);
        Outcome relative = relativise(*resolved.result, base);
        expect(relative, readingsOfACase, random);
    }
}

TEST_F(ReferenceModel, agreesOnGeneratedIrisMadeRelative)
{
    const std::size_t cases = testCases();
    for (std::size_t i = 0; i < cases && !isDone(); ++i) {
        SCOPED_TRACE(i);
        Random random(i);
        auto [iri, base] = relatedSpecimens(random);
        if (below(4, random) == 0) {
            expect(readsAlike(iri, readingsOfACase, random));
            expect(readsAlike(base, readingsOfACase, random));
        }
        Outcome relative = relativise(iri, base);
        expect(relative, readingsOfACase, random);
        if (below(4, random) == 0 && relative.result) {
            Outcome back = resolve(*relative.result, base);
            expect(back, readingsOfACase, random);
        }
    }
}

} // namespace foundation::network
