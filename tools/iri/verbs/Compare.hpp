#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Compares two IRIs.
ExitCode compare(const Arguments& arguments, Output& output);

} // namespace tool::verbs
