#pragma once

#include <cstddef>

namespace foundation::network::iri::detail {

/// Where the components of a text end, as indexes into it. What lies between two ends, but for the
/// delimiters, is the component.
struct ComponentRanges {
    std::size_t schemeEnd = 0;
    std::size_t hostBegin = 0;
    std::size_t hostEnd = 0;
    std::size_t pathBegin = 0;
    std::size_t pathEnd = 0;
    std::size_t queryEnd = 0;
};

} // namespace foundation::network::iri::detail
