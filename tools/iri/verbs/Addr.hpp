#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Tells about IP addresses.
ExitCode addr(const Arguments& arguments, Output& output);

} // namespace tool::verbs
