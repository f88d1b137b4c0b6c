#pragma once

#include <cstddef>
#include <string_view>

namespace tool::text {

/// How many columns of a terminal a text takes: two for each wide character, none for one that is
/// drawn over the one before (UAX #11).
/// @param text  valid UTF-8 without unprintable characters
std::size_t displayWidth(std::string_view text) noexcept;

} // namespace tool::text
