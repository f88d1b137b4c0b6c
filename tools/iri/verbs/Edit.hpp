#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Changes components of IRIs.
ExitCode edit(const Arguments& arguments, Output& output);

} // namespace tool::verbs
