#pragma once

#include <cstdint>
#include <string_view>

namespace foundation::network::iri::grammar {

/// Matches a port number, which is one or more ASCII digits of a value up to 65535, at the front of
/// a text, and moves @p first past it. Leading zeros count for nothing.
///
/// @param number  written only if the number matched
/// @returns whether it matched; what is left over is the caller's to judge
bool parsePort(std::u32string_view::const_iterator& first, std::u32string_view::const_iterator last,
               std::uint16_t& number);

/// Whether the whole text is a port number, which is then written to @p number.
bool portStringToNumeric(std::u32string_view text, std::uint16_t& number);

} // namespace foundation::network::iri::grammar
