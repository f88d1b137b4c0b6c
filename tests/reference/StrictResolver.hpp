#pragma once

#include <string>

namespace foundation::network::tests {

/// Resolves a reference as RFC 3986, 5.2 says, on plain texts and by the letter.
std::string strictlyResolved(const std::string& reference, const std::string& base);

} // namespace foundation::network::tests
