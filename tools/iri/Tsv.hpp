#pragma once

#include <string>
#include <string_view>

namespace tool {

/// What stands for an absent value in tab-separated values.
inline constexpr std::string_view TSV_ABSENT = "\\N";

/// @{
/// The escapes of tab-separated values: \t, \n and \\.
void appendTsv(std::string& result, std::string_view text);
std::string undoTsv(std::string_view escaped);
/// @}

} // namespace tool
