// A letter that says how the text is encoded, and a text: whatever takes it in makes the same of it.

#include "Target.hpp"

#include "iri/Agreement.hpp"

namespace foundation::network::fuzz {

void run(Input input)
{
    const bool isUtf16 = input.byte() % 2 != 0;
    const std::string found =
        isUtf16 ? tests::difference(input.units()) : tests::difference(input.rest());
    require(found.empty(), found);
}

} // namespace foundation::network::fuzz
