#include "Row.hpp"

#include "../Text.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace tool::bulk {
namespace {

    constexpr std::string_view TSV_SPECIALS = "\t\n\\";

} // namespace

RowWriter::RowWriter(RowFormat format, std::span<const std::string> columns)
    : format_(format)
    , columns_(columns)
{
}

void RowWriter::begin(std::string& result)
{
    result_ = &result;
    start_ = result.size();
    restart();
}

void RowWriter::restart()
{
    result_->resize(start_);
    column_ = 0;
    isFirst_ = true;
    if (format_ == RowFormat::Json)
        json_.begin();
}

void RowWriter::separate()
{
    if (!isFirst_)
        result_->push_back('\t');
    isFirst_ = false;
}

void RowWriter::add(std::string_view text)
{
    if (format_ == RowFormat::Json) {
        json_.add(columns_[column_++], text);
        return;
    }
    separate();
    if (format_ == RowFormat::Text)
        text::appendPrintable(*result_, text);
    else if (format_ == RowFormat::Tsv)
        appendTsv(*result_, text);
    else
        result_->append(text);
}

void RowWriter::addAbsent()
{
    if (format_ == RowFormat::Json) {
        json_.addNull(columns_[column_++]);
        return;
    }
    separate();
    if (format_ == RowFormat::Tsv)
        result_->append("\\N");
}

void RowWriter::addNumber(std::uint64_t number)
{
    if (format_ == RowFormat::Json) {
        json_.addNumber(columns_[column_++], number);
        return;
    }
    separate();
    std::array<char, 20> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    result_->append(digits.data(), end);
}

void RowWriter::addBool(bool value)
{
    if (format_ == RowFormat::Json) {
        json_.addBool(columns_[column_++], value);
        return;
    }
    separate();
    result_->append(value ? "true" : "false");
}

void RowWriter::addCarried(std::string_view name, std::string_view escaped)
{
    const bool isText = text::findInvalidUtf8(escaped) == std::string_view::npos;
    std::string safe;
    if (!isText)
        text::appendEscapedBytes(safe, escaped);
    const std::string_view carried = isText ? escaped : std::string_view(safe);
    if (format_ == RowFormat::Json) {
        if (carried == "\\N")
            json_.addNull(name);
        else
            json_.add(name, undoTsv(carried));
        return;
    }
    separate();
    result_->append(carried);
}

void RowWriter::addNothing()
{
    if (format_ == RowFormat::Json)
        addAbsent();
    else
        separate();
}

void RowWriter::end()
{
    if (format_ == RowFormat::Json)
        json_.end(*result_);
    else
        result_->push_back(format_ == RowFormat::Raw ? '\0' : '\n');
}

void appendTsv(std::string& result, std::string_view text)
{
    for (;;) {
        const std::size_t special = text.find_first_of(TSV_SPECIALS);
        result.append(text.substr(0, special));
        if (special == std::string_view::npos)
            return;
        const char c = text[special];
        result.push_back('\\');
        result.push_back(c == '\t' ? 't' : c == '\n' ? 'n' : '\\');
        text.remove_prefix(special + 1);
    }
}

std::string undoTsv(std::string_view escaped)
{
    std::string result;
    for (;;) {
        const std::size_t escape = escaped.find('\\');
        result.append(escaped.substr(0, escape));
        if (escape == std::string_view::npos || escape + 1 == escaped.size()) {
            if (escape != std::string_view::npos)
                result.push_back('\\'); // one at the end stands for itself
            return result;
        }
        const char c = escaped[escape + 1];
        if (c == 't')
            result.push_back('\t');
        else if (c == 'n')
            result.push_back('\n');
        else if (c == '\\')
            result.push_back('\\');
        else
            result.append(escaped.substr(escape, 2)); // not one of ours
        escaped.remove_prefix(escape + 2);
    }
}

} // namespace tool::bulk
