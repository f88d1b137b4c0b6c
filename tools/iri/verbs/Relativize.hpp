#pragma once

#include "../CommandLine.hpp"
#include "../ExitCode.hpp"
#include "../Output.hpp"

namespace tool::verbs {

/// Gives IRIs in terms of a base.
ExitCode relativize(const Arguments& arguments, Output& output);

} // namespace tool::verbs
