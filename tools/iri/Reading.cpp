#include "Reading.hpp"

namespace tool {

Reading readIri(const std::string& text)
{
    if (const std::optional<Problem> problem = problemOf(text))
        return {std::nullopt, summaryOf(*problem), problem};
    return {foundation::network::IRI(text)};
}

} // namespace tool
