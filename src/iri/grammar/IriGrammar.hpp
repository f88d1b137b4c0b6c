#pragma once

#include <foundation/network/iri/detail/Parts.hpp>

#include <string>

namespace foundation::network::iri::grammar {

/// Matches `IRI-reference` (RFC 3987, 2.2) at the front of a text, fills @p parts, which must be
/// fresh, and moves @p first to the end of the match.
///
/// The text is an IRI reference only if this is its end. Allocates nothing; linear in the length.
///
/// @returns true: the empty text matches too
bool parseIriReference(std::u32string::const_iterator& first, std::u32string::const_iterator last,
                       iri::detail::Parts<std::u32string::const_iterator>& parts);

} // namespace foundation::network::iri::grammar
