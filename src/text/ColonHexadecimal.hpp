#pragma once

#include <span>
#include <string>

namespace foundation::network::text {

/// Bytes as link-layer addresses are written: two lower-case digits each with ":" between them.
std::string toColonHexadecimal(std::span<const unsigned char> bytes);

} // namespace foundation::network::text
