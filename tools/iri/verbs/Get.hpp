#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Shows single components of IRIs.
ExitCode get(const Arguments& arguments, Output& output);

} // namespace tool::verbs
