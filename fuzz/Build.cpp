// Calls on a bag of components, one a line, as callAlike tells: what it builds is what the naive one
// builds, or both refuse.

#include "BagCalls.hpp"
#include "Target.hpp"

namespace foundation::network::fuzz {

void run(Input input)
{
    tests::TwinBag bag;
    tests::Outcomes outcomes;
    while (!input.isAtEnd()) {
        const std::string line = input.line();
        require(callAlike(bag, Input(line)));
    }
    require(tests::buildAlike(bag, tests::Depth::EVERYTHING, outcomes));
}

} // namespace foundation::network::fuzz
