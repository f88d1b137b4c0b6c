#include "iri/grammar/SchemeGrammar.hpp"

namespace foundation::network::iri::grammar {

bool parseScheme(std::u32string::const_iterator& first, std::u32string::const_iterator last)
{
    Cursor at(first, last);
    const bool matched = scheme(at);
    first = at.position();
    return matched;
}

} // namespace foundation::network::iri::grammar
