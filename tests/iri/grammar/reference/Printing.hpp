#pragma once

#include "SpiritGrammars.hpp"

#include <ostream>
#include <string>

namespace reference {

/// The text in ASCII, with all else by number: "a<U+E9>".
std::string printed(const std::u32string& text);

// What GoogleTest calls for a value in a message.
void PrintTo(const Range& range, std::ostream* out);
void PrintTo(const Match& match, std::ostream* out);
void PrintTo(const ReferenceParts& parts, std::ostream* out);

} // namespace reference
