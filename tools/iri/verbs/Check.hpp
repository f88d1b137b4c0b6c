#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Judges whether records are IRIs.
ExitCode check(const Arguments& arguments, Output& output);

} // namespace tool::verbs
