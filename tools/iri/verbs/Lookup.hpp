#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Asks the name service for the addresses of names and for the names of addresses.
ExitCode lookup(const Arguments& arguments, Output& output);

} // namespace tool::verbs
