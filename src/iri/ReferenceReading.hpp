#pragma once

#include "iri/grammar/IriGrammar.hpp"
#include "iri/grammar/PortGrammar.hpp"
#include "text/CodePointIterator.hpp"

#include <foundation/network/iri/detail/ComponentRanges.hpp>
#include <foundation/network/iri/detail/Parts.hpp>

#include <cstdint>
#include <string_view>

namespace foundation::network::iri::detail {

/// Whether there is no port, or one that is a number, which is then written to @p number.
///
/// RFC 3986, 3.2.3 allows an empty port and one of any size.
/// Departure: a port is a number from 0 to 65535 in ASCII digits, with any number of zeros.
template <class It>
bool hasGoodPort(const Parts<It>& parts, std::uint16_t& number)
{
    const auto& port = parts.hierarchicalPart.port;
    if (!port)
        return true;
    grammar::Cursor<It> at(port->begin(), port->end());
    return grammar::port_number(at, number) && at.atEnd();
}

/// Reads a whole text as an IRI reference. Whatever takes IRIs in takes them by this function.
///
/// @param first       moved to where the grammar stopped
/// @param parts       must be fresh; what the grammar matched, also of a text that is refused
/// @param portNumber  written if there is a port
/// @returns whether the text is an IRI reference
template <class It>
bool readReference(It& first, It last, Parts<It>& parts, std::uint16_t& portNumber)
{
    return grammar::parseIriReference(first, last, parts) && first == last
           && hasGoodPort(parts, portNumber);
}

/// @{
/// Whether a whole text is an IRI reference in a valid encoding.
template <class It, class Unit>
bool isReferenceBy(std::basic_string_view<Unit> text) noexcept
{
    It at(text.data());
    Parts<It> parts;
    std::uint16_t portNumber = 0;
    return readReference(at, It(text.data() + text.size()), parts, portNumber);
}

inline bool isReference(std::string_view utf8) noexcept
{
    if (text::isAllAscii(utf8))
        return isReferenceBy<text::AsciiIterator>(utf8);
    return !text::endsInsideSequence(utf8) && isReferenceBy<text::Utf8Iterator>(utf8);
}

inline bool isReference(std::u16string_view utf16) noexcept
{
    return !text::endsInsideSequence(utf16) && isReferenceBy<text::Utf16Iterator>(utf16);
}
/// @}

/// Where the components lie.
/// @param parts    after `update`
/// @param indexOf  the index of an iterator's unit in the text
template <class It, class IndexOf>
ComponentRanges rangesOf(const Parts<It>& parts, IndexOf indexOf)
{
    const HierarchicalPart<It>& hierarchicalPart = parts.hierarchicalPart;
    ComponentRanges ranges;
    ranges.schemeEnd = parts.scheme ? indexOf(parts.scheme->end()) : 0;
    ranges.hostBegin = indexOf(hierarchicalPart.host->begin());
    ranges.hostEnd = indexOf(hierarchicalPart.host->end());
    ranges.pathBegin = indexOf(hierarchicalPart.path->begin());
    ranges.pathEnd = indexOf(hierarchicalPart.path->end());
    ranges.queryEnd = indexOf(parts.query->end());
    return ranges;
}

} // namespace foundation::network::iri::detail
