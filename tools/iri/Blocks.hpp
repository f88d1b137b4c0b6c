#pragma once

#include "Colors.hpp"
#include "Output.hpp"

#include <string>
#include <string_view>

namespace tool {

/// Text for people: a block for each record, which is a title and lines with labels, and an empty
/// line between two blocks.
class Blocks {
public:
    Blocks(ColorMode color, Output& output)
        : colors_(color)
        , output_(output)
    {
    }

    /// Begins a block.
    /// @param title  valid UTF-8, as is all that follows
    void begin(std::string_view title);

    /// Adds a line; an empty value shows as "(empty)".
    void add(std::string_view label, Ink ink, std::string_view value);

    /// Adds a line whose value is not there.
    void addAbsent(std::string_view label);

    /// Ends the block.
    void end();

private:
    void beginLine(std::string_view label);
    void appendValue(Ink ink, std::string_view value);

    Colors colors_;
    Output& output_;
    std::string shown_; // spares an allocation for each value
    bool isFirst_ = true;
};

} // namespace tool
