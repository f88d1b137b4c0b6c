#include "iri/grammar/IriGrammar.hpp"

#include "iri/grammar/IriProductions.hpp"

namespace foundation::network::iri::grammar {

bool parseIriReference(std::u32string::const_iterator& first, std::u32string::const_iterator last,
                       iri::detail::Parts<std::u32string::const_iterator>& parts)
{
    Cursor at(first, last);
    IRI_reference(at, parts);
    first = at.position();
    return true;
}

} // namespace foundation::network::iri::grammar
