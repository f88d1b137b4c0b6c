#pragma once

#include <string>

namespace foundation::network::tests {

/// The normal form of a text by syntax: case, escapes and dot segments (RFC 3986, 6.2.2; RFC 3987,
/// 5.3.2), and a port without leading zeros. Two texts with one form name the same resource. A
/// relative reference is taken against a base that is the same for all.
std::string normalForm(const std::string& text);

/// Whether RFC 3987 allows all percent signs and brackets that stand in a text.
bool hasSoundEscapes(const std::string& text);

} // namespace foundation::network::tests
