#pragma once

#include <cstddef>

namespace foundation::network::iri::detail {

/// Where the components of a text end, as indexes into it. What lies between two ends, but for the
/// delimiters, is the component.
struct ComponentRanges {
    std::size_t schemeEnd = 0; ///< behind the scheme, before its ":"
    std::size_t hostBegin = 0; ///< behind the "//", or behind the "@" of user information
    std::size_t hostEnd = 0;   ///< before the port with its ":"
    std::size_t pathBegin = 0; ///< behind the authority
    std::size_t pathEnd = 0;   ///< where a "?" would stand
    std::size_t queryEnd = 0;  ///< where a "#" would stand
};

} // namespace foundation::network::iri::detail
