// A reference, its base, and what draws the readings, each a line: resolving gives what the model
// gives, also where the results go on as references and bases.

#include "Target.hpp"

#include "reference/Specimen.hpp"

namespace foundation::network::fuzz {

void run(Input input)
{
    const std::string reference = input.line();
    const std::string base = input.line();
    if (!IRI::tryParse(reference) || !IRI::tryParse(base))
        return;
    tests::Specimen left = tests::parsedSpecimen(reference);
    tests::Specimen right = tests::parsedSpecimen(base);
    tests::Random random(input.byte());
    require(tests::readsAlike(left, tests::below(4, random), random));
    require(tests::readsAlike(right, tests::below(4, random), random));

    tests::Outcome resolved = tests::resolve(left, right);
    require(resolved.alike);
    if (!resolved.result)
        return;
    require(tests::readsAlike(*resolved.result, 8, random));
    const auto goOn = [&random](tests::Outcome next) {
        require(next.alike);
        if (next.result)
            require(tests::readsAlike(*next.result, 8, random));
    };
    goOn(tests::resolve(*resolved.result, right));
    goOn(tests::resolve(left, *resolved.result));
}

} // namespace foundation::network::fuzz
