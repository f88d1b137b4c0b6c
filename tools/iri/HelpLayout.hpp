#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// How texts are laid out on a terminal of the usual width.
namespace tool::help {

inline constexpr std::size_t WIDTH = 80;

/// Appends words until a line is full, and then begins another one.
/// @param margin  how many spaces stand before each line but the first
/// @param column  where the first line goes on
void appendWrapped(std::string& result, std::string_view text, std::size_t margin,
                   std::size_t column);

/// Appends a text whose lines may be of any length: paragraphs are filled. What is indented stays
/// as it is, but a line of two columns ("  word  text") that is too long goes on below its text.
void appendParagraphs(std::string& result, std::string_view text);

} // namespace tool::help
