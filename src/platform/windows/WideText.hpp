#pragma once

#include <string>
#include <string_view>

namespace foundation::network::platform {

/// A text of the system as UTF-16. The system does not look at surrogates: one without its other
/// half becomes U+FFFD.
std::u16string fromWideText(std::wstring_view text);

} // namespace foundation::network::platform
