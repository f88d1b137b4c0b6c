// An IRI, a base, and what draws the readings, each a line: one is made relative to the other as the
// model does it, or refused alike, and so is the way back.

#include "Target.hpp"

#include "reference/Specimen.hpp"

namespace foundation::network::fuzz {

void run(Input input)
{
    const std::string text = input.line();
    const std::string base = input.line();
    if (!IRI::tryParse(text) || !IRI::tryParse(base))
        return;
    tests::Specimen left = tests::parsedSpecimen(text);
    tests::Specimen right = tests::parsedSpecimen(base);
    tests::Random random(input.byte());
    require(tests::readsAlike(left, tests::below(4, random), random));
    require(tests::readsAlike(right, tests::below(4, random), random));

    tests::Outcome relative = tests::relativise(left, right);
    require(relative.alike);
    if (!relative.result)
        return;
    require(tests::readsAlike(*relative.result, 8, random));
    tests::Outcome back = tests::resolve(*relative.result, right);
    require(back.alike);
    if (back.result)
        require(tests::readsAlike(*back.result, 8, random));
}

} // namespace foundation::network::fuzz
