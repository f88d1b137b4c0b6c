#include "iri/DotSegments.hpp"

#include <cstddef>

namespace foundation::network::iri {

namespace {

    // Whether the segment that begins at an index is a dot segment.
    bool isDotSegmentAt(std::string_view path, std::size_t dot) noexcept
    {
        const bool startsPath = dot == 0;
        const std::string_view rest = path.substr(dot);
        if (rest == "." || rest == ".." || rest.starts_with("../"))
            return true;
        // "./" counts at the start of the path, and elsewhere only with something behind it.
        return rest.starts_with("./") && (startsPath || rest.size() > 2);
    }

    // The same of those that begin behind a slash in a part of the path.
    bool hasDotSegmentIn(std::string_view path, std::size_t begin, std::size_t end) noexcept
    {
        for (std::size_t i = begin; i < end; ++i) {
            if (path[i] == '.' && path[i - 1] == '/' && isDotSegmentAt(path, i))
                return true;
        }
        return false;
    }

} // namespace

bool hasDotSegments(std::string_view path) noexcept
{
    if (path.starts_with('.') && isDotSegmentAt(path, 0))
        return true;
    constexpr std::size_t STEP = 16; // bytes that are looked at without a branch
    std::size_t index = 1;
    for (; index + STEP <= path.size(); index += STEP) {
        const char* const bytes = path.data() + index - 1;
        unsigned char begins = 0;
        for (std::size_t i = 0; i < STEP; ++i)
            begins |= ((bytes[i] ^ '/') | (bytes[i + 1] ^ '.')) == 0 ? 1U : 0U;
        if (begins != 0 && hasDotSegmentIn(path, index, index + STEP))
            return true;
    }
    return hasDotSegmentIn(path, index, path.size());
}

} // namespace foundation::network::iri
