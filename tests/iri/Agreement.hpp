#pragma once

#include <string>

namespace foundation::network::tests {

/// @{
/// The first difference between what the ways to take a text in make of it, in words; the empty text
/// if they agree. The constructor of `IRI` is the judge; held against it are `IRI::tryParse`,
/// `IRIView`, `diagnose` and `repair`.
std::string difference(const std::string& text);
std::string difference(const std::u16string& text);
/// @}

} // namespace foundation::network::tests
