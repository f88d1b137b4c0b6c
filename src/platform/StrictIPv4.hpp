#pragma once

namespace foundation::network::platform {

/// Whether a text that the parser of addresses takes for IPv4 has four decimal parts with dots between
/// them. On some systems that parser takes other forms as well, such as 127.1.
///
/// On Windows the text need not end there: what may follow, such as a port, the parser has judged.
bool isStrictIPv4(const char* text) noexcept;

} // namespace foundation::network::platform
