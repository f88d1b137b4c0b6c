#include "iri/DotSegments.hpp"

#include <cstddef>

namespace foundation::network::iri {

namespace {

    // Whether the "." at an index, which begins a segment, makes that segment a dot segment.
    bool isDotSegmentAt(std::u32string_view path, std::size_t dot) noexcept
    {
        const bool startsPath = dot == 0;
        const std::u32string_view rest = path.substr(dot);
        if (rest == U"." || rest == U".." || rest.starts_with(U"../"))
            return true;
        // "./" counts at the start of the path, and elsewhere only with something behind it.
        return rest.starts_with(U"./") && (startsPath || rest.size() > 2);
    }

} // namespace

bool hasDotSegments(std::u32string_view path) noexcept
{
    constexpr std::u32string_view NONE;
    for (std::size_t dot = path.find(U'.'); dot != NONE.npos; dot = path.find(U'.', dot + 1)) {
        const bool startsSegment = dot == 0 || path[dot - 1] == U'/';
        if (startsSegment && isDotSegmentAt(path, dot))
            return true;
    }
    return false;
}

} // namespace foundation::network::iri
