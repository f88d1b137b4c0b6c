#include "MemberWriter.hpp"

#include "Tsv.hpp"

#include <algorithm>
#include <stdexcept>

namespace tool {

MemberWriter::MemberWriter(RowFormat format, std::span<const std::string_view> columns)
    : isJson_(format == RowFormat::Json)
    , columns_(columns.begin(), columns.end())
    , cells_(columns.size())
{
}

void MemberWriter::begin()
{
    if (isJson_)
        json_.begin();
    else
        std::fill(cells_.begin(), cells_.end(), TSV_ABSENT);
}

void MemberWriter::add(std::string_view name, std::string_view value)
{
    if (isJson_) {
        json_.add(name, value);
        return;
    }
    std::string& cell = cellOf(name);
    cell.clear();
    appendTsv(cell, value);
}

void MemberWriter::addBool(std::string_view name, bool value)
{
    if (isJson_)
        json_.addBool(name, value);
    else
        cellOf(name) = value ? "true" : "false";
}

void MemberWriter::addNumber(std::string_view name, std::uint64_t value)
{
    if (isJson_)
        json_.addNumber(name, value);
    else
        cellOf(name) = std::to_string(value);
}

void MemberWriter::addNull(std::string_view name)
{
    if (isJson_)
        json_.addNull(name);
    else
        cellOf(name) = TSV_ABSENT;
}

void MemberWriter::addUnlessEmpty(std::string_view name, std::string_view value)
{
    if (value.empty())
        addNull(name);
    else
        add(name, value);
}

void MemberWriter::beginList(std::string_view name)
{
    isFirstElement_ = true;
    if (isJson_) {
        json_.beginList(name);
        return;
    }
    list_ = &cellOf(name);
    list_->clear();
}

void MemberWriter::addElement(std::string_view element)
{
    if (isJson_) {
        json_.addElement(element);
        return;
    }
    if (!isFirstElement_)
        list_->push_back(',');
    isFirstElement_ = false;
    appendTsv(*list_, element);
}

void MemberWriter::addElement(std::uint32_t element)
{
    if (isJson_)
        json_.addElement(element);
    else
        addElement(std::to_string(element));
}

void MemberWriter::endList()
{
    if (isJson_)
        json_.endList();
}

void MemberWriter::end(std::string& result)
{
    if (isJson_) {
        json_.end(result);
        return;
    }
    for (std::size_t i = 0; i < cells_.size(); ++i)
        result.append(i == 0 ? "" : "\t").append(cells_[i]);
    result.push_back('\n');
}

void MemberWriter::appendHeader(std::string& result) const
{
    if (isJson_)
        return;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        result.append(i == 0 ? "" : "\t").append(columns_[i]);
    result.push_back('\n');
}

std::string& MemberWriter::cellOf(std::string_view name)
{
    const auto column = std::find(columns_.begin(), columns_.end(), name);
    // A member that has no column would be lost without a word.
    if (column == columns_.end())
        throw std::logic_error(std::string("no column for ").append(name));
    return cells_[static_cast<std::size_t>(column - columns_.begin())];
}

} // namespace tool
