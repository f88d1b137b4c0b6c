#pragma once

#include "CommandLine.hpp"
#include "Output.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// One text to work on.
struct Record {
    std::string text;   ///< any bytes
    std::string origin; ///< where it came from: "argument 2", "line 7"
    std::string source; ///< the same as a compiler has it: "<argument 2>", "<stdin>"
    std::uint64_t line = 1;
};

/// The texts that a command line asks for: its operands, and for each operand "-", or if there is
/// no operand, the lines of standard input.
///
/// A line ends at a line feed or at the end of the input; one carriage return before that does not
/// belong to it, nor does a byte order mark before the first line. It may hold any other byte and
/// be of any length. Before the program waits for input, all output is written.
class Records {
public:
    Records(std::vector<Operand> operands, Output& output);

    /// Fetches the next record.
    /// @returns false if there is none
    /// @throws std::system_error if standard input cannot be read, or output not be written
    bool next(Record& record);

private:
    bool nextLine(std::string& line);
    bool fillBuffer();

    std::vector<Operand> operands_;
    std::size_t nextOperand_ = 0;
    Output& output_;

    bool isReading_ = false;
    std::size_t lineNumber_ = 0;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of what was read and not yet handed out
    std::size_t end_ = 0;
};

} // namespace tool
