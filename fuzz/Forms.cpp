// A text, and behind a line feed what draws the order in which its forms are read: each reading is
// what the model answers, whatever was read before.

#include "Target.hpp"

#include "reference/Specimen.hpp"

namespace foundation::network::fuzz {

void run(Input input)
{
    const std::string text = input.line();
    if (!IRI::tryParse(text))
        return;
    tests::Specimen specimen = tests::parsedSpecimen(text);
    tests::Random random(input.byte() + 256U * input.byte());
    require(tests::readsAlike(specimen, 60, random));
}

} // namespace foundation::network::fuzz
