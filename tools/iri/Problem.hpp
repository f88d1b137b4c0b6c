#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

/// Why a record is no IRI.
struct Problem {
    std::string_view code;           ///< a stable name, such as "bad-character"
    std::string_view message;        ///< one line
    std::string_view component;      ///< where, such as "user-info"; empty if in none
    std::string_view expected;       ///< what could have stood there; may be empty
    std::size_t offset = 0;          ///< where, in bytes
    std::size_t length = 0;          ///< how many bytes are at fault
    std::size_t characterOffset = 0; ///< where, in characters; each byte that is no UTF-8 is one
};

/// What is wrong with a text; nothing, if it is an IRI. Unlike the library, takes nothing for UTF-8
/// that is not.
std::optional<Problem> problemOf(std::string_view record);

/// A record that came from somewhere.
struct Place {
    std::string_view source; ///< a file, or "<stdin>"
    std::uint64_t line;      ///< 1 is the first
};

/// Appends what a compiler would say: where, what, the line with a mark under it, what could have
/// stood there, and a text that would do.
void appendProblem(std::string& result, const Place& place, std::string_view record,
                   const Problem& problem);

} // namespace tool
