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

/// Makes an IRI of components.
/// @param plain  those in plain text, which are escaped; but a host that is an IP literal is written
///               as it is (RFC 3986, 3.2.2)
/// @param written  those that carry their escapes already, and come before the plain ones of that
///                 name. If there is one, the text of the whole has to read as these components;
///                 else the IRI is as it was built, and its text may be none in some forms.
/// @param pairs  what is appended to a query in plain text
Reading buildIri(const PartTexts& plain, PartTexts written,
                 const std::vector<QueryPair>& pairs = {});

} // namespace tool
