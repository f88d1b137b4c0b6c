#pragma once

#include "MemberWriter.hpp"

#include <array>
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
    std::string_view source; ///< a file, "<stdin>" or "<argument 2>"
    std::uint64_t line;      ///< 1 is the first
};

/// What is wrong in one line: the component and the message.
std::string summaryOf(const Problem& problem);

/// The members that a problem adds to a record, in their order: why it is no IRI in words, and as
/// code, where, what could have stood there, and a text that would do.
inline constexpr std::array<std::string_view, 8> PROBLEM_MEMBERS{
    "error", "code", "component", "offset", "length", "characterOffset", "expected", "repaired"};

/// Adds them.
void addProblem(MemberWriter& writer, std::string_view record, const Problem& problem);

/// Appends what a compiler would say: where, what, the line with a mark under it, what could have
/// stood there, and a text that would do.
void appendProblem(std::string& result, const Place& place, std::string_view record,
                   const Problem& problem);

/// The same of the value of an option, to be told as the reason why the command line makes no sense:
/// "--base is no IRI", and what a compiler would say on the lines below, the last without its end.
std::string describeProblem(std::string_view option, std::string_view value,
                            const Problem& problem);

} // namespace tool
