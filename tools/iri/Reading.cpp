#include "Reading.hpp"

#include "Text.hpp"

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace tool {

Reading readIri(const std::string& text)
{
    // The library takes some bytes for UTF-8 that are not; what is printed must be.
    const std::size_t invalid = text::findInvalidUtf8(text);
    if (invalid != std::string_view::npos)
        return {std::nullopt, "not valid UTF-8 at byte " + std::to_string(invalid + 1), false};
    try {
        return {foundation::network::IRI(text), ""};
    } catch (const foundation::core::except::AnonymousInternalException<std::logic_error>&) {
        return {std::nullopt, "not a valid IRI"};
    }
}

} // namespace tool
