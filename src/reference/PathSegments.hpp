#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// The work on paths behind the resolution of references (RFC 3986, 5.2), on plain lists.
///
/// A segment carries the slash in front of it, so that the concatenation of a list is the path:
/// "/a/b/" is "/a", "/b", "/". Only the first segment may have no slash, or two.
namespace foundation::network::reference {

using Segments = std::vector<std::string>;

/// Appends @p path to a list.
///
/// Without @p removeDots it becomes one more segment, behind a "/" if it needs one. With it, the
/// dot segments of the whole are removed (RFC 3986, 5.2.4). A path that `splitPathSegments` cannot
/// split then adds nothing.
///
/// @param absolute  whether the result begins with "/", whatever the list and the path say
void mergePathSegments(std::string_view path, Segments& segments, bool absolute, bool removeDots);

/// Moves the segments of @p input to the end of @p output without the dot segments. Climbing above
/// the top of @p output does nothing. Empties @p input.
/// @rfc{3986,5.2.4}
void removeDotSegments(Segments& output, std::deque<std::string>& input);

/// The path of a list.
std::string joinPathSegments(const Segments& segments);

/// A path without its dot segments; a copy, if `hasDotSegments` finds none.
///
/// @param absolute  whether the result begins with "/", if there was something to remove
std::string removeRelativePathSegments(std::string_view path, bool absolute);

/// The same without a copy: a view of @p path, or of @p made, which then holds what was made.
std::string_view withoutDotSegments(std::string_view path, bool absolute, std::string& made);

} // namespace foundation::network::reference
