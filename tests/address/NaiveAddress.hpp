#pragma once

#include <string>
#include <vector>

/// Addresses told by their bytes alone, written for being read and not for speed.
namespace foundation::network::tests {

using Bytes = std::vector<unsigned char>;

bool naiveIsLoopback(const Bytes& bytes);
bool naiveIsLinkLocal(const Bytes& bytes);
bool naiveIsMulticast(const Bytes& bytes);

/// The text of 4 or 16 bytes: decimal numbers with dots; RFC 5952 with the last four bytes in decimal
/// where the address holds one of version 4 (RFC 4291, 2.5.5).
std::string naiveText(const Bytes& bytes);

} // namespace foundation::network::tests
