#pragma once

#include <string>
#include <string_view>

/// The crossings between UTF-8, in which the tool works, and UTF-16, which Windows takes. The
/// numbers of bytes and units that go through one call stay below 2^31.
namespace tool::system {

/// UTF-16 to UTF-8. A surrogate without its other half becomes three bytes that are no UTF-8, so
/// that it is refused where UTF-8 is asked for.
std::string toUtf8(std::wstring_view wide);

/// UTF-8 to UTF-16, with U+FFFD for what is none.
std::wstring toWide(std::string_view utf8);

} // namespace tool::system
