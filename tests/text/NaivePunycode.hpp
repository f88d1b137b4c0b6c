#pragma once

#include <string>

namespace foundation::network::tests {

/// The Punycode of a label, by the procedure of RFC 3492, 6.3, step by step.
std::string naivePunycode(const std::u32string& label);

} // namespace foundation::network::tests
