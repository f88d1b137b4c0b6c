#pragma once

#include <string_view>

namespace foundation::network::iri {

/// Whether a path has a dot segment (RFC 3986, 5.2.4) that resolving would remove.
///
/// Escapes are not looked through. This is not the same as asking whether some segment is "." or
/// "..": a path that ends in "/./" and has no other dot segment has none here, and that is meant.
bool hasDotSegments(std::string_view path) noexcept;

} // namespace foundation::network::iri
