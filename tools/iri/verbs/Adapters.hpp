#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Lists the network adapters of the machine.
ExitCode adapters(const Arguments& arguments, Output& output);

} // namespace tool::verbs
