#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Converts domain names between Unicode and ASCII.
ExitCode idn(const Arguments& arguments, Output& output);

} // namespace tool::verbs
