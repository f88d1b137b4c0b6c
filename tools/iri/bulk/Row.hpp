#pragma once

#include "../Json.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool::bulk {

/// How a record is written.
enum class RowFormat {
    Text, ///< printable, columns between tabs; what is absent is empty
    Tsv,  ///< columns between tabs; tab, line feed and backslash as \t, \n, \\; absent as \N
    Raw,  ///< columns between tabs, as they are; a NUL at the end
    Json, ///< an object a line; absent as null
};

/// Writes records, column by column, one after the other.
class RowWriter {
public:
    /// @param columns  the names of the columns, without those that are carried through
    RowWriter(RowFormat format, std::span<const std::string> columns);

    /// Begins a row behind what @p result holds.
    void begin(std::string& result);

    /// Takes back what was written since `begin`.
    void restart();

    /// @{
    /// The next column.
    /// @param text  valid UTF-8
    void add(std::string_view text);
    void addAbsent();
    void addNumber(std::uint64_t number);
    void addBool(bool value);
    /// @}

    /// A column that is carried through, as it stands in a record of tab-separated values.
    /// @param escaped  any bytes
    void addCarried(std::string_view name, std::string_view escaped);

    /// The next column of a record for which there is no answer.
    void addNothing();

    void end();

private:
    void separate();

    RowFormat format_;
    std::span<const std::string> columns_;
    JsonLines json_;
    std::string* result_ = nullptr;
    std::size_t start_ = 0;
    std::size_t column_ = 0; // of those that have names here
    bool isFirst_ = true;
};

/// @{
/// The escapes of tab-separated values.
void appendTsv(std::string& result, std::string_view text);
std::string undoTsv(std::string_view escaped);
/// @}

} // namespace tool::bulk
