#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The steps from which the conversions between the forms of a component are put together.
///
/// All are pure and linear. Escapes are written with upper-case digits; an escape that is kept from
/// the input keeps its own. Whatever writes UTF-8 fails above U+10FFFF as `text::toUtf8` does.
namespace foundation::network::iri {

/// A set of ASCII characters, made at compile time.
class AsciiSet {
public:
    explicit constexpr AsciiSet(std::string_view members)
    {
        for (const char member : members) {
            const auto c = static_cast<unsigned char>(member);
            bits_[c / 64] |= std::uint64_t{1} << (c % 64);
        }
    }

    constexpr bool contains(char32_t c) const noexcept
    {
        return c < 0x80 && ((bits_[c / 64] >> (c % 64)) & 1) != 0;
    }

private:
    std::uint64_t bits_[2] = {};
};

/// Writes "%25" for each "%" that two hexadecimal digits follow, so that decoded text is not read
/// as an escape later. "100%" and "50%zz" stay.
std::u32string protectEscapes(std::u32string_view text);

/// Escapes the characters of @p table.
std::u32string escapeMembers(std::u32string_view text, const AsciiSet& table);

/// Escapes the private use characters of RFC 3987, 2.2 (`iprivate`), with U+E0000 to U+E0FFF.
std::u32string escapePrivateUse(std::u32string_view text);

/// Escapes what no IRI may show: controls, `"<>\^` and "`{|}", the directional formatting
/// characters of RFC 3987, 4.1, surrogates, noncharacters and specials.
std::u32string escapeForbidden(std::u32string_view text);

/// Writes the text as UTF-8 and escapes each byte up to 0x20 or from 0x7F (RFC 3987, 3.1, step 2).
/// Leaves "%" and the delimiters alone, so that an escape is never escaped again.
std::u32string encodeNonAscii(std::u32string_view text);

/// The same of a text in lax UTF-8, no element of which lies above U+10FFFF.
std::string encodeNonAscii(std::string_view lax);

/// Undoes escapes, but for those of the values in @p keep; one element of the result a byte.
/// @returns nothing if the text is empty or holds a value above U+10FFFF
std::optional<std::u32string> decodeEscapes(std::u32string_view text, std::u32string_view keep);

/// The UTF-8 that a text in UTF-8 denotes once its escapes are undone, in one pass and without an
/// intermediate text. What this cannot tell, the other steps do.
/// @returns nothing if the text denotes what is not UTF-8
std::optional<std::string> decodeToUtf8(std::string_view utf8);

/// Bytes that can be read as UTF-8, but for five and six byte sequences and wrong values.
struct RepairedUtf8 {
    std::string bytes;
    bool repaired; ///< whether some byte was written as an escape
};

/// Writes each byte that is no part of a whole UTF-8 sequence as an escape.
RepairedUtf8 repairUtf8(std::string bytes);

/// Escapes each "%" that begins no escape of two ASCII hexadecimal digits, and with
/// @p escapeBrackets each "[" and "]".
/// @{
/// @param text  in UTF-32, or in lax UTF-8 as the result is then
std::u32string fixEscapes(std::u32string_view text, bool escapeBrackets);
std::string fixEscapes(std::string_view text, bool escapeBrackets);
/// @}

} // namespace foundation::network::iri
