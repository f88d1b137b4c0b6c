#pragma once

#include "Json.hpp"
#include "RowFormat.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Writes records that have members with names, one after the other: as JSON objects, or as
/// tab-separated values with a column for each name.
class MemberWriter {
public:
    /// @param format  JSON, or else tab-separated values
    /// @param columns  the names of all members that there may be, in the order of the columns
    MemberWriter(RowFormat format, std::span<const std::string_view> columns);

    /// Begins a record. Each of its members is added once at most; those that are not there are
    /// absent in tab-separated values.
    void begin();

    /// @{
    /// Adds a member to the record.
    /// @param value  valid UTF-8
    void add(std::string_view name, std::string_view value);
    void addBool(std::string_view name, bool value);
    void addNumber(std::string_view name, std::uint64_t value);
    void addNull(std::string_view name);
    /// @}

    /// As `add`, or as `addNull` if the text is empty.
    void addUnlessEmpty(std::string_view name, std::string_view value);

    /// @{
    /// Begins a member that is a list, adds elements to it, ends it. In a column, commas stand
    /// between them.
    void beginList(std::string_view name);
    void addElement(std::string_view element);
    void addElement(std::uint32_t element);
    void endList();
    /// @}

    /// Ends the record and appends it, with a line feed.
    void end(std::string& result);

    /// Appends the names of the columns as a record; nothing with JSON, where each has its own.
    void appendHeader(std::string& result) const;

private:
    /// A cell of the table, as it is written.
    std::string& cellOf(std::string_view name);

    bool isJson_;
    std::vector<std::string_view> columns_;
    std::vector<std::string> cells_;
    std::string* list_ = nullptr;
    bool isFirstElement_ = true;
    JsonLines json_;
};

} // namespace tool
