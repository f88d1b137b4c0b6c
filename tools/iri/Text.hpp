#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 text that came from anywhere, on its way to a terminal or into JSON.
namespace tool::text {

/// The offset of the first byte that belongs to no valid UTF-8 sequence (RFC 3629, 4); npos, if all
/// do.
std::size_t findInvalidUtf8(std::string_view text) noexcept;

/// What is wrong with a text that is not UTF-8, and at which byte, counted from 0; empty if nothing
/// is.
std::string describeInvalidUtf8(std::string_view text);

/// Valid UTF-8 as UTF-16.
std::u16string toUtf16(std::string_view text);

/// UTF-16 as UTF-8, with U+FFFD for a surrogate that has no other half.
std::string toUtf8(std::u16string_view text);

/// Whether a character has no glyph, or does something to what stands around it: controls, format
/// characters such as those that turn the writing direction, line separators, noncharacters. The
/// two joiners (U+200C, U+200D) belong to the writing of several languages and are printable.
bool isUnprintable(char32_t character) noexcept;

/// Appends @p text so that a terminal shows all of it and obeys none of it: an unprintable
/// character becomes "\n", "\r", "\t" or "\u{202E}", a byte that is not UTF-8 "\xFF", a backslash
/// two.
void appendPrintable(std::string& result, std::string_view text);

/// `appendPrintable` of the first hundred and some characters; if that is not all, "..." and how
/// long the text is.
std::string excerpt(std::string_view text);

/// Appends bytes as valid UTF-8 text from which they can be had again: a byte that is not UTF-8
/// becomes "\xFF", a backslash two; all else stays.
void appendEscapedBytes(std::string& result, std::string_view bytes);

/// Appends bytes as valid UTF-8 text: a byte that is not UTF-8 becomes "%FF", all else stays.
void appendPercentEscaped(std::string& result, std::string_view bytes);

/// Appends a JSON text in which each unprintable character outside ASCII is written as JSON's
/// escape.
/// @param json  valid UTF-8
void appendPrintableJson(std::string& result, std::string_view json);

} // namespace tool::text
