#pragma once

#include "text/CodePointIterator.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <string>

namespace foundation::network::iri::grammar {

/// Matches `IRI-reference` (RFC 3987, 2.2) at the front of a text, fills @p parts, which must be
/// fresh, and moves @p first to the end of the match.
///
/// The text is an IRI reference only if this is its end. Allocates nothing; linear in the length.
///
/// @tparam It  over UTF-32 as it lies in a string, or over UTF-8 or UTF-16, of which a defect is
///             never matched
/// @returns true: the empty text matches too
template <class It>
bool parseIriReference(It& first, It last, iri::detail::Parts<It>& parts);

extern template bool parseIriReference(std::u32string::const_iterator&,
                                       std::u32string::const_iterator,
                                       iri::detail::Parts<std::u32string::const_iterator>&);
extern template bool parseIriReference(text::AsciiIterator&, text::AsciiIterator,
                                       iri::detail::Parts<text::AsciiIterator>&);
extern template bool parseIriReference(text::Utf8Iterator&, text::Utf8Iterator,
                                       iri::detail::Parts<text::Utf8Iterator>&);
extern template bool parseIriReference(text::Utf16Iterator&, text::Utf16Iterator,
                                       iri::detail::Parts<text::Utf16Iterator>&);

} // namespace foundation::network::iri::grammar
