#pragma once

#include "Row.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool::bulk {

/// Whether there is an answer for a record, and if not, why.
struct Outcome {
    std::string_view code;             ///< a stable name of what is wrong; empty if nothing is
    std::optional<std::size_t> offset; ///< the byte of the record at which that is

    bool isValid() const noexcept { return code.empty(); }
};

/// What a verb does with one record, when it makes one record of each.
///
/// Any number of threads may use one.
class RowMaker {
public:
    RowMaker() = default;
    RowMaker(const RowMaker&) = delete;
    RowMaker& operator=(const RowMaker&) = delete;
    virtual ~RowMaker() = default;

    /// The names of the columns that it adds to a row.
    virtual std::vector<std::string> columns() const = 0;

    /// Adds as many columns to the row.
    /// @param record  any bytes
    /// @returns what is wrong, if there is no answer; what was added then counts for nothing
    virtual Outcome make(std::string_view record, RowWriter& row) const = 0;
};

} // namespace tool::bulk
