#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The work on paths behind the resolution of references (RFC 3986, 5.2), on plain lists.
///
/// A segment carries the slash in front of it, so that the concatenation of a list is the path:
/// "/a/b/" is "/a", "/b", "/". Only the first segment may have no slash, or two, and the one behind a
/// first "/" none.
namespace foundation::network::reference {

/// Views of the paths that were split or merged, which have to live as long as the list.
using Segments = std::vector<std::string_view>;

/// Appends @p path to a list.
///
/// Without @p removeDots it becomes one more segment, behind a "/" if it needs one. With it, the
/// dot segments of the whole are removed (RFC 3986, 5.2.4). A path that `splitPathSegments` cannot
/// split then adds nothing.
///
/// @param absolute  whether the result begins with "/", whatever the list and the path say
/// @param made      holds what the list shows of a path that had to be copied
void mergePathSegments(std::string_view path, Segments& segments, bool absolute, bool removeDots,
                       std::string& made);

/// Takes the dot segments out of a list. Climbing above its top does nothing.
/// @rfc{3986,5.2.4}
void removeDotSegments(Segments& segments) noexcept;

/// The path of a list.
std::string joinPathSegments(const Segments& segments);

/// A path without its dot segments: a view of @p path itself, if `hasDotSegments` finds none, or of
/// @p made, which then holds what was made.
///
/// @param absolute  whether the result begins with "/", if there was something to remove
std::string_view removeRelativePathSegments(std::string_view path, bool absolute,
                                            std::string& made);

} // namespace foundation::network::reference
