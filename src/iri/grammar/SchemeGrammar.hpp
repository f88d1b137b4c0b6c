#pragma once

#include "iri/grammar/Characters.hpp"

#include <string>

namespace foundation::network::iri::grammar {

// RFC 3986, 3.1:  scheme = ALPHA *( ALPHA / DIGIT / "+" / "-" / "." )
// Departure: letters and digits are those of Unicode.
template <class It>
bool scheme(Cursor<It>& at)
{
    if (!at.takeIf(alpha))
        return false;
    at.skipWhile([](char32_t c) {
        return isAscii(c) ? isAsciiOf(c, ALPHA | DIGIT | SCHEME_MARK) : alnum(c);
    });
    return true;
}

/// Matches `scheme` at the front of a text and moves @p first past it.
/// @returns whether it matched; what is left over is the caller's to judge
bool parseScheme(std::u32string::const_iterator& first, std::u32string::const_iterator last);

} // namespace foundation::network::iri::grammar
