#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Shows the components of IRIs.
ExitCode parse(const Arguments& arguments, Output& output);

} // namespace tool::verbs
