#pragma once

#include "iri/grammar/Cursor.hpp"

#include <cstdint>
#include <string_view>

namespace foundation::network::iri::grammar {

// port-number = 1*DIGIT, of a value up to 65535, with any number of leading zeros
template <class It>
bool port_number(Cursor<It>& at, std::uint16_t& number)
{
    constexpr std::uint32_t MAX_PORT = 65535;
    const auto isDigit = [](char32_t c) { return c >= U'0' && c <= U'9'; };

    const It start = at.position();
    std::uint32_t value = 0;
    while (at.is(isDigit)) {
        value = value * 10 + static_cast<std::uint32_t>(at.next() - U'0');
        if (value > MAX_PORT) {
            at.reset(start);
            return false;
        }
    }
    if (at.position() == start)
        return false;
    number = static_cast<std::uint16_t>(value);
    return true;
}

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
