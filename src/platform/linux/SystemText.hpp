#pragma once

#include <string>
#include <string_view>

namespace foundation::network::platform {

/// Bytes that the system calls a text, as UTF-16: UTF-8, if that is what they are, or else ASCII, with
/// U+FFFD for each other byte. The kernel does not say in which encoding its names are.
std::u16string fromSystemText(std::string_view bytes);

} // namespace foundation::network::platform
