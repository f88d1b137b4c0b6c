#include "Verbs.hpp"

#include "verbs/Adapters.hpp"
#include "verbs/Addr.hpp"
#include "verbs/Build.hpp"
#include "verbs/Check.hpp"
#include "verbs/Compare.hpp"
#include "verbs/Completion.hpp"
#include "verbs/Edit.hpp"
#include "verbs/Get.hpp"
#include "verbs/Idn.hpp"
#include "verbs/Lookup.hpp"
#include "verbs/Map.hpp"
#include "verbs/Parse.hpp"
#include "verbs/Relativize.hpp"
#include "verbs/Resolve.hpp"

#include <algorithm>
#include <iterator>

namespace tool {
namespace {

    // A verb is a file in verbs/ and a line here.
    constexpr Verb VERBS[] = {
        {"parse", "show the components of IRIs", verbs::parse},
        {"get", "show single components of IRIs", verbs::get},
        {"resolve", "show what references denote against a base", verbs::resolve},
        {"relativize", "show IRIs in terms of a base", verbs::relativize},
        {"build", "put IRIs together from components", verbs::build},
        {"edit", "change components of IRIs", verbs::edit},
        {"check", "judge whether the lines of files are IRIs", verbs::check},
        {"compare", "tell how two IRIs differ", verbs::compare},
        {"idn", "convert domain names between Unicode and ASCII", verbs::idn},
        {"addr", "tell about IP addresses", verbs::addr},
        {"lookup", "look up the addresses of names, and the names of addresses", verbs::lookup},
        {"adapters", "list the network adapters of this machine", verbs::adapters},
        {"map", "make one record of each record of the input, in bulk", verbs::map},
        {"completion", "print what completes command lines in a shell", verbs::completion},
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
