#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::iri::grammar {

/// Splits a path into segments that carry their leading slash, so that their concatenation is the
/// path.
///
/// A path may begin with a segment without a slash, with one slash or with two, and may end in a
/// slash; an empty segment anywhere else, and the empty path, are not splittable.
///
/// @returns whether the path could be split; if not, @p segments is left as it was
bool splitPathSegments(std::u32string_view path, std::vector<std::u32string>& segments);

} // namespace foundation::network::iri::grammar
