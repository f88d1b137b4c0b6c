#pragma once

#include <string_view>

namespace tool {

/// What the program tells its caller, the same for all verbs. Of two the greater counts.
enum class ExitCode : int {
    Yes = 0,         ///< all is as asked
    No = 1,          ///< something is invalid, different, absent or not found
    Usage = 2,       ///< the command line makes no sense
    InputOutput = 3, ///< input could not be read, or output not written
    System = 4,      ///< the system or its name service failed, so that there is no answer
};

/// The same for people: the end of every help.
inline constexpr std::string_view EXIT_CODES = R"help(Exit codes:
  0  yes: all is as asked
  1  no: something is invalid, different, absent or not found
  2  the command line makes no sense
  3  input could not be read, or output not written
  4  the system or its name service failed
)help";

} // namespace tool
