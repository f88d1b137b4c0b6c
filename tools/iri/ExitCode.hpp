#pragma once

namespace tool {

/// What the program tells its caller, the same for all verbs.
enum class ExitCode : int {
    Yes = 0,         ///< every record is as asked
    No = 1,          ///< some record is not: it is no IRI, or cannot be shown as asked; or the
                     ///< answer to a question is no
    Usage = 2,       ///< the command line makes no sense
    InputOutput = 3, ///< input could not be read, or output not written
};

} // namespace tool
