#include "iri/grammar/PortGrammar.hpp"

namespace foundation::network::iri::grammar {

bool parsePort(std::u32string_view::const_iterator& first, std::u32string_view::const_iterator last,
               std::uint16_t& number)
{
    Cursor at(first, last);
    const bool matched = port_number(at, number);
    first = at.position();
    return matched;
}

bool portStringToNumeric(std::u32string_view text, std::uint16_t& number)
{
    auto first = text.begin();
    return parsePort(first, text.end(), number) && first == text.end();
}

} // namespace foundation::network::iri::grammar
