#pragma once

#include "CommandLine.hpp"

#include <string_view>

namespace tool {

/// How a record is written.
enum class RowFormat {
    Text, ///< printable, for people
    Tsv,  ///< columns between tabs; tab, line feed and backslash as \t, \n, \\; absent as \N
    Raw,  ///< as it is, with a NUL at the end
    Json, ///< an object a line; absent as null
};

/// The options that choose a format.
class FormatOptions {
public:
    enum class Raw { Offered, Senseless };

    /// Adds the options.
    /// @param raw  whether what is written is one text a record, so that it can be written as it is
    FormatOptions(CommandLine& commandLine, Raw raw);
    FormatOptions(const FormatOptions&) = delete;
    FormatOptions& operator=(const FormatOptions&) = delete;

    RowFormat format() const noexcept;

    /// Whether the names of the columns are to be written first.
    bool hasHeader() const noexcept { return header_; }

private:
    std::string_view conflict() const noexcept;

    bool json_ = false;
    bool tsv_ = false;
    bool print0_ = false;
    bool header_ = false;
};

} // namespace tool
