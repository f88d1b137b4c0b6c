#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Makes one record of each record of the input.
ExitCode map(const Arguments& arguments, Output& output);

} // namespace tool::verbs
