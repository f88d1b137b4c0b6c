#pragma once

#include "CommandLine.hpp"
#include "ExitCode.hpp"
#include "Output.hpp"

#include <span>
#include <string_view>

namespace tool {

/// Something that the program can do.
struct Verb {
    std::string_view name;
    std::string_view summary;

    /// Does it. What it leaves in @p output is written by the caller.
    ExitCode (*run)(const Arguments& arguments, Output& output);
};

/// What the verb "help" does, which is not one of those below.
inline constexpr std::string_view HELP_SUMMARY = "tell how to use the program, or one of its verbs";

/// All verbs, in the order of the help.
std::span<const Verb> allVerbs() noexcept;

/// @returns null if there is none of that name
const Verb* findVerb(std::string_view name) noexcept;

} // namespace tool
