#pragma once

#include <string>
#include <string_view>

namespace foundation::network::iri::grammar {

/// Undoes percent escapes at the front of a text, one element of the result a byte, and moves
/// @p first past what was read. Any other character up to U+10FFFF is copied.
///
/// An escape is "%" and two ASCII hexadecimal digits of either case. Anything else behind a "%",
/// and an escape of a value among @p excluded, is ordinary text and stays as it is. A value above
/// U+10FFFF ends the match.
///
/// @param result  what was read is appended
/// @returns whether at least one character was read, so false for the empty text
bool percentDecode(std::u32string_view::const_iterator& first,
                   std::u32string_view::const_iterator last, std::u32string_view excluded,
                   std::u32string& result);

} // namespace foundation::network::iri::grammar
