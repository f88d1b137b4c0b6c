#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Resolves references against a base.
ExitCode resolve(const Arguments& arguments, Output& output);

} // namespace tool::verbs
