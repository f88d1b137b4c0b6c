#include "iri/grammar/PortGrammar.hpp"

#include "iri/grammar/Cursor.hpp"

namespace foundation::network::iri::grammar {

// port-number = 1*DIGIT
bool parsePort(std::u32string_view::const_iterator& first, std::u32string_view::const_iterator last,
               std::uint16_t& number)
{
    constexpr std::uint32_t MAX_PORT = 65535;
    const auto isDigit = [](char32_t c) { return c >= U'0' && c <= U'9'; };

    Cursor at(first, last);
    std::uint32_t value = 0;
    while (at.is(isDigit)) {
        value = value * 10 + static_cast<std::uint32_t>(at.next() - U'0');
        if (value > MAX_PORT)
            return false;
    }
    if (at.position() == first)
        return false;
    first = at.position();
    number = static_cast<std::uint16_t>(value);
    return true;
}

bool portStringToNumeric(std::u32string_view text, std::uint16_t& number)
{
    auto first = text.begin();
    return parsePort(first, text.end(), number) && first == text.end();
}

} // namespace foundation::network::iri::grammar
