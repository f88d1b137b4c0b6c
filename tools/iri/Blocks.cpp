#include "Blocks.hpp"

#include "Remarks.hpp"
#include "Text.hpp"

#include <cstddef>

namespace tool {

void Blocks::begin(std::string_view title)
{
    if (!isFirst_)
        output_.text().push_back('\n');
    isFirst_ = false;
    appendValue(Ink::Name, title);
    output_.text().push_back('\n');
}

void Blocks::add(std::string_view label, Ink ink, std::string_view value)
{
    beginLine(label);
    appendValue(ink, value);
    output_.text().push_back('\n');
}

void Blocks::addAbsent(std::string_view label)
{
    beginLine(label);
    colors_.append(output_.text(), Ink::Aside, remarks::ABSENT);
    output_.text().push_back('\n');
}

void Blocks::end()
{
    output_.endRecord();
}

void Blocks::beginLine(std::string_view label)
{
    constexpr std::size_t LABEL_WIDTH = 11;
    output_.text().append("  ").append(label).append(LABEL_WIDTH - label.size(), ' ');
}

void Blocks::appendValue(Ink ink, std::string_view value)
{
    shown_.clear();
    text::appendPrintable(shown_, value);
    remarks::tellApart(shown_);
    if (shown_.empty())
        colors_.append(output_.text(), Ink::Aside, remarks::EMPTY);
    else
        colors_.append(output_.text(), ink, shown_);
}

} // namespace tool
