#pragma once

#include <string>
#include <vector>

/// The work on paths behind resolving and relativising, a second time.
namespace foundation::network::tests {

/// Each with the slash in front of it, so that they are the path when they are put together.
using NaiveSegments = std::vector<std::u32string>;

/// Whether resolving would find a dot segment in a path.
bool naiveHasDotSegments(const std::u32string& path);

/// The segments of a path; none if it cannot be split.
NaiveSegments naiveSplit(const std::u32string& path);

/// What becomes of a list when a path is put behind it and the dot segments are removed.
NaiveSegments naiveMerge(const std::u32string& path, NaiveSegments segments, bool absolute);

/// A path without its dot segments.
std::u32string naiveWithoutDots(const std::u32string& path, bool absolute);

std::u32string naiveJoin(const NaiveSegments& segments);

bool beginsWithSlash(const std::u32string& text);

} // namespace foundation::network::tests
