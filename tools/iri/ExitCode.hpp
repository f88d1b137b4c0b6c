#pragma once

namespace tool {

/// What the program tells its caller, the same for all verbs. Of two the greater counts.
enum class ExitCode : int {
    Yes = 0,         ///< every record is as asked
    No = 1,          ///< some record is not: it is no IRI, no address, not found, or cannot be
                     ///< shown as asked; or the answer to a question is no
    Usage = 2,       ///< the command line makes no sense
    InputOutput = 3, ///< input could not be read, or output not written
    System = 4,      ///< the system or its name service failed, so that there is no answer
};

} // namespace tool
