#include "Row.hpp"

#include "../Text.hpp"
#include "../Tsv.hpp"

#include <array>
#include <charconv>

namespace tool::bulk {

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
    isEscaped_ = false;
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
        result_->append(TSV_ABSENT);
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
    if (format_ == RowFormat::Json && escaped == TSV_ABSENT) {
        json_.addNull(name);
    } else if (format_ == RowFormat::Json && isText) {
        json_.add(name, undoTsv(escaped));
    } else if (format_ == RowFormat::Json) {
        std::string safe;
        text::appendEscapedBytes(safe, undoTsv(escaped));
        json_.add(name, safe);
        isEscaped_ = true;
    } else {
        separate();
        if (isText)
            result_->append(escaped);
        else
            text::appendEscapedBytes(*result_, escaped);
    }
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
    if (format_ == RowFormat::Json) {
        if (isEscaped_)
            json_.addBool("escaped", true);
        json_.end(*result_);
        return;
    }

    result_->push_back(format_ == RowFormat::Raw ? '\0' : '\n');
}

} // namespace tool::bulk
