#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Puts IRIs together from components.
ExitCode build(const Arguments& arguments, Output& output);

} // namespace tool::verbs
