#pragma once

#include "reference/Specimen.hpp"

#include <utility>

namespace foundation::network::tests {

/// Two values that have much in common: made from texts, built of components, or results of
/// resolving and relativising others.
std::pair<Specimen, Specimen> relatedSpecimens(Random& random);

} // namespace foundation::network::tests
