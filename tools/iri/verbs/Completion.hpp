#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

#include <span>
#include <string>
#include <string_view>

namespace tool::verbs {

/// A shell that can complete the program's command lines.
struct Shell {
    std::string_view name;

    /// What it is to read for that.
    std::string (*script)();
};

/// All of them, in the order of the help.
std::span<const Shell> allShells() noexcept;

/// The verb `completion`: prints what a shell needs to complete command lines.
ExitCode completion(const Arguments& arguments, Output& output);

} // namespace tool::verbs
