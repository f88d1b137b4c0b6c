#include "Verbs.hpp"

#include "verbs/Parse.hpp"

#include <algorithm>
#include <iterator>

namespace tool {
namespace {

    // A verb is a file in verbs/ and a line here.
    constexpr Verb VERBS[] = {
        {"parse", "show the components of IRIs", verbs::parse},
    };

} // namespace

std::span<const Verb> allVerbs() noexcept
{
    return VERBS;
}

const Verb* findVerb(std::string_view name) noexcept
{
    const auto* const verb = std::find_if(std::begin(VERBS), std::end(VERBS),
                                          [name](const Verb& each) { return each.name == name; });
    return verb == std::end(VERBS) ? nullptr : verb;
}

} // namespace tool
