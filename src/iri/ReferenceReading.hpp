#pragma once

#include "iri/grammar/IriGrammar.hpp"
#include "iri/grammar/PortGrammar.hpp"

#include <foundation/network/iri/detail/ComponentRanges.hpp>
#include <foundation/network/iri/detail/Parts.hpp>

#include <cstdint>

namespace foundation::network::iri::detail {

/// Reads a whole text as an IRI reference. Whatever takes IRIs in takes them by this function.
///
/// @param parts       must be fresh
/// @param portNumber  written if there is a port
/// @returns false, with both unspecified, if the text is none
template <class It>
bool readReference(It first, It last, Parts<It>& parts, std::uint16_t& portNumber)
{
    if (!grammar::parseIriReference(first, last, parts) || first != last)
        return false;
    // RFC 3986, 3.2.3 allows an empty port and one of any size.
    // Departure: a port is a number from 0 to 65535 in ASCII digits, with any number of zeros.
    const auto& port = parts.hierarchicalPart.port;
    if (!port)
        return true;
    grammar::Cursor<It> at(port->begin(), port->end());
    return grammar::port_number(at, portNumber) && at.atEnd();
}

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
