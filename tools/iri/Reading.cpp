#include "Reading.hpp"

#include "Text.hpp"

#include <stdexcept>
#include <utility>

namespace tool {

Reading readIri(const std::string& text)
{
    // The library takes some bytes for UTF-8 that are not; what is printed must be.
    if (std::string problem = text::describeInvalidUtf8(text); !problem.empty())
        return {std::nullopt, std::move(problem), false};
    try {
        return {foundation::network::IRI(text), ""};
    } catch (const foundation::core::except::AnonymousInternalException<std::logic_error>&) {
        return {std::nullopt, "not a valid IRI"};
    }
}

} // namespace tool
