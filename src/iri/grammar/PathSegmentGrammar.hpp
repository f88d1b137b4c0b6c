#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// Segments that carry their leading slash, so that their concatenation is the path.
///
/// A path may begin with a segment without a slash, with one slash or with two, and may end in a
/// slash; an empty segment anywhere else, and the empty path, are not splittable.
namespace foundation::network::iri::grammar {

/// Splits a path into its segments, views of it, which are appended to a list.
///
/// @returns whether the path could be split; if not, @p segments is left as it was
bool splitPathSegments(std::string_view text, std::vector<std::string_view>& segments);

/// How many segments a path has; none, if it cannot be split.
std::size_t countPathSegments(std::string_view text) noexcept;

} // namespace foundation::network::iri::grammar
