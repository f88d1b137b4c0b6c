#pragma once

#include "../Json.hpp"
#include "../RowFormat.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool::bulk {

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
    /// @param escaped  any bytes; those that are not UTF-8 are escaped, and an object says so in a
    ///        member "escaped"
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
    bool isEscaped_ = false; // whether bytes of a column are
};

} // namespace tool::bulk
