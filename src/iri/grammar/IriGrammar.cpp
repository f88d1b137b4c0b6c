#include "iri/grammar/IriGrammar.hpp"

#include "iri/grammar/IriProductions.hpp"

namespace foundation::network::iri::grammar {

template <class It>
bool parseIriReference(It& first, It last, iri::detail::Parts<It>& parts)
{
    Cursor<It> at(first, last);
    IRI_reference(at, parts);
    first = at.position();
    return true;
}

template bool parseIriReference(std::u32string::const_iterator&, std::u32string::const_iterator,
                                iri::detail::Parts<std::u32string::const_iterator>&);
template bool parseIriReference(text::AsciiIterator&, text::AsciiIterator,
                                iri::detail::Parts<text::AsciiIterator>&);
template bool parseIriReference(text::Utf8Iterator&, text::Utf8Iterator,
                                iri::detail::Parts<text::Utf8Iterator>&);
template bool parseIriReference(text::Utf16Iterator&, text::Utf16Iterator,
                                iri::detail::Parts<text::Utf16Iterator>&);

} // namespace foundation::network::iri::grammar
