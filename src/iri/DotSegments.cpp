#include "iri/DotSegments.hpp"

#include <cstddef>

namespace foundation::network::iri {

namespace {

    // Whether the segment that begins at an index is a dot segment.
    bool isDotSegmentAt(std::u32string_view path, std::size_t dot) noexcept
    {
        const bool startsPath = dot == 0;
        const std::u32string_view rest = path.substr(dot);
        if (rest == U"." || rest == U".." || rest.starts_with(U"../"))
            return true;
        // "./" counts at the start of the path, and elsewhere only with something behind it.
        return rest.starts_with(U"./") && (startsPath || rest.size() > 2);
    }

    // The same of those that begin behind a slash in a part of the path.
    bool hasDotSegmentIn(std::u32string_view path, std::size_t begin, std::size_t end) noexcept
    {
        for (std::size_t i = begin; i < end; ++i) {
            if (path[i] == U'.' && path[i - 1] == U'/' && isDotSegmentAt(path, i))
                return true;
        }
        return false;
    }

} // namespace

bool hasDotSegments(std::u32string_view path) noexcept
{
    if (path.starts_with(U'.') && isDotSegmentAt(path, 0))
        return true;
    constexpr std::size_t STEP = 8; // units that are looked at without a branch
    std::size_t index = 1;
    for (; index + STEP <= path.size(); index += STEP) {
        const char32_t* const units = path.data() + index - 1;
        char32_t begins = 0;
        for (std::size_t i = 0; i < STEP; ++i)
            begins |= ((units[i] ^ U'/') | (units[i + 1] ^ U'.')) == 0 ? 1U : 0U;
        if (begins != 0 && hasDotSegmentIn(path, index, index + STEP))
            return true;
    }
    return hasDotSegmentIn(path, index, path.size());
}

} // namespace foundation::network::iri
