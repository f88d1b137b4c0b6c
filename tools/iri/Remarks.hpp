#pragma once

#include <string>
#include <string_view>

/// What stands in place of a component, for people.
namespace tool::remarks {

inline constexpr std::string_view ABSENT = "(absent)";
inline constexpr std::string_view EMPTY = "(empty)";
inline constexpr std::string_view UNDECODABLE = "(cannot be decoded)";

/// Makes a printable text unlike each of the remarks.
inline void tellApart(std::string& text)
{
    if (text == ABSENT || text == EMPTY || text == UNDECODABLE)
        text.replace(0, 1, "\\u{28}");
}

} // namespace tool::remarks
