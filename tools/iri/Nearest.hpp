#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tool {

/// How many typing errors lie between two words (Damerau and Levenshtein): bytes that are missing,
/// too many, or wrong, and neighbours that have changed places.
std::size_t typingErrors(std::string_view left, std::string_view right);

/// What was meant by a word that is none of some names.
/// @returns "; did you mean NAME?" with the first of the names that are nearest, if that is two
///          typing errors away at most and keeps some of the word; else nothing
std::string suggestion(std::string_view word, std::span<const std::string_view> names);

} // namespace tool
