#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Strict conversions between UTF-8, UTF-16 and UTF-32. Every defect is an error; nothing is ever
/// replaced. All functions are pure.
namespace foundation::network::text {

inline constexpr char32_t MAX_CODE_POINT = 0x10FFFF;

/// Decodes UTF-8 into @p result, with one allocation.
///
/// A lead byte F8 to FF is read as the lead of four bytes, of which it gives the low three bits.
/// Overlong forms, surrogates and values above U+10FFFF are defects.
///
/// @returns false, with @p result unspecified, if the text has a defect
bool decodeUtf8(std::string_view utf8, std::u32string& result);

/// Decodes UTF-16 into @p result, with one allocation.
///
/// @returns nothing, or, with @p result unspecified, the unit at which a misplaced surrogate was
///          noticed: a low one itself, or what stands behind a high one, 0 at the end of the text
std::optional<char16_t> decodeUtf16(std::u16string_view utf16, std::u32string& result);

/// UTF-16 to UTF-8, with one allocation.
/// @returns nothing, if a surrogate is misplaced
std::optional<std::string> encodeUtf8(std::u16string_view utf16);

/// The UTF-8 in which everybody else writes what `decodeUtf8` reads, which takes other lead bytes for
/// F0 to F4, too. As many bytes in the same places.
/// @param utf8  that `decodeUtf8` reads
std::string withUsualLeads(std::string_view utf8);

/// ASCII to UTF-32.
/// @param ascii  for which `isAllAscii` holds
std::u32string widenAscii(std::string_view ascii);

/// UTF-8 to UTF-32.
/// @throws AnonymousInternalException<std::exception> "Invalid UTF-8 sequence encountered while
///         trying to encode UTF-32 character"
std::u32string toUtf32(std::string_view utf8);

/// UTF-16 to UTF-32.
/// @throws boost::wrapexcept<std::out_of_range> "Misplaced UTF-16 surrogate U+0xd800 encountered
///         while trying to encode UTF-32 sequence", with the unit at fault; after a high surrogate
///         at the end of the text that is the terminating zero, written "0"
std::u32string toUtf32(std::u16string_view utf16);

/// @{
/// Throws what `toUtf32` throws of a text, if it does. Takes no memory.
void requireWellFormed(std::string_view utf8);
void requireWellFormed(std::u16string_view utf16);
/// @}

/// UTF-32 to UTF-16.
/// @throws boost::wrapexcept<std::out_of_range> "Invalid UTF-32 code point U+0x110000 encountered
///         while trying to encode UTF-16 sequence", for a surrogate or a value above U+10FFFF
std::u16string toUtf16(std::u32string_view utf32);

/// UTF-32 to UTF-8. A surrogate is written as three bytes: only `toUtf16` refuses it.
/// @throws boost::wrapexcept<std::out_of_range> the same text as `toUtf16`, for a value above
///         U+10FFFF
std::string toUtf8(std::u32string_view utf32);

/// The bytes of one code point in UTF-8.
struct Utf8Sequence {
    char bytes[4];
    std::uint8_t length;

    std::string_view view() const noexcept { return {bytes, length}; }
};

/// Writes one code point as UTF-8, by the rule of `toUtf8` and with its failure.
Utf8Sequence encodeUtf8(char32_t codePoint);

} // namespace foundation::network::text
