#pragma once

#include "Components.hpp"
#include "Reading.hpp"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace tool {

/// The text of each component; nothing for one that is absent.
using PartTexts = std::array<std::optional<std::string>, PART_COUNT>;

/// A pair for the query, as a form sends it.
struct QueryPair {
    std::string key;
    std::string value;
};

/// Reads the text that components make which are written already (RFC 3986, 5.3), if it reads as
/// these components.
Reading readWritten(const PartTexts& written);

/// Makes an IRI of components. The text of one that is built of plain text alone may be no IRI in
/// some forms; if others are written already, it is one in each.
/// @param plain  those in plain text, which are escaped; but a host that is an IP literal is written
///               as it is (RFC 3986, 3.2.2)
/// @param written  those that are written already: if there is one, what comes out is read once
///                 more, and has to read as these components. Of what stands in both, this counts.
/// @param pairs  what is appended to a query in plain text
Reading buildIri(const PartTexts& plain, PartTexts written,
                 const std::vector<QueryPair>& pairs = {});

} // namespace tool
