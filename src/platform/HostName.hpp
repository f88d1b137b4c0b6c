#pragma once

#include <string>
#include <system_error>

namespace foundation::network::platform {

/// The name of this machine without its domain part.
///
/// @param[out] name  receives the name; unspecified after a failure
/// @returns the system's error, also if the name is longer than the system's limit
std::error_code readHostName(std::u16string& name);

} // namespace foundation::network::platform
