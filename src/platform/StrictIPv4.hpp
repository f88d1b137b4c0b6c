#pragma once

namespace foundation::network::platform {

/// Whether a text consists of four decimal parts with dots between them. Parsers of addresses take
/// other forms as well on some systems, such as 127.1.
bool isStrictIPv4(const char* text) noexcept;

} // namespace foundation::network::platform
