#pragma once

#include <string>
#include <string_view>

/// The crossings between UTF-16 and ASCII bytes. They never fail: what has no counterpart becomes a
/// character that no valid name holds.
namespace foundation::network::text {

/// UTF-16 to ASCII; each unit above 0x7F becomes "?".
std::string toAscii(std::u16string_view text);

/// ASCII to UTF-16; each byte above 0x7F becomes U+FFFD.
std::u16string fromAscii(std::string_view text);

} // namespace foundation::network::text
