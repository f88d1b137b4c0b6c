#include "iri/PercentCoding.hpp"

#include "iri/grammar/Characters.hpp"
#include "iri/grammar/PercentDecodeGrammar.hpp"
#include "text/HexDigits.hpp"
#include "text/SameUnits.hpp"
#include "text/Utf.hpp"
#include "text/WellFormed.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace foundation::network::iri {

namespace {

    void appendEscape(std::u32string& result, unsigned char byte)
    {
        result.push_back(U'%');
        result.push_back(static_cast<unsigned char>(text::hexDigit(byte >> 4)));
        result.push_back(static_cast<unsigned char>(text::hexDigit(byte & 0xFU)));
    }

    // Writes an escape; gives the place behind it.
    char32_t* putEscape(char32_t* out, char32_t byte) noexcept
    {
        out[0] = U'%';
        out[1] = static_cast<unsigned char>(text::hexDigit(byte >> 4));
        out[2] = static_cast<unsigned char>(text::hexDigit(byte & 0xFU));
        return out + 3;
    }

    // Writes the escapes of all bytes of a character in UTF-8; gives the place behind them. The
    // characters of most scripts take two or three bytes and are written without a call.
    char32_t* putEscaped(char32_t* out, char32_t c)
    {
        const auto continuation = [c](unsigned shift) { return 0x80U | ((c >> shift) & 0x3FU); };
        if (c < 0x80)
            return putEscape(out, c);
        if (c < 0x800)
            return putEscape(putEscape(out, 0xC0U | (c >> 6)), continuation(0));
        if (c < 0x10000) {
            out = putEscape(out, 0xE0U | (c >> 12));
            return putEscape(putEscape(out, continuation(6)), continuation(0));
        }
        const text::Utf8Sequence utf8 = text::encodeUtf8(c);
        for (const char byte : utf8.view())
            out = putEscape(out, static_cast<unsigned char>(byte));
        return out;
    }

    // The escapes of all bytes of a character in UTF-8.
    void appendEscaped(std::u32string& result, char32_t character)
    {
        const text::Utf8Sequence utf8 = text::encodeUtf8(character);
        for (const char byte : utf8.view())
            appendEscape(result, static_cast<unsigned char>(byte));
    }

    // Escapes the characters that satisfy a predicate and copies the others.
    template <class Predicate>
    std::u32string escapeIf(std::u32string_view text, Predicate mustEscape)
    {
        std::u32string result;
        result.reserve(text.size());
        for (const char32_t c : text) {
            if (mustEscape(c))
                appendEscaped(result, c);
            else
                result.push_back(c);
        }
        return result;
    }

    constexpr AsciiSet forbiddenAscii(R"("<>\^`{|})");

    bool isForbidden(char32_t c)
    {
        if (c < 0xA0)
            return c < 0x20 || c >= 0x7F || forbiddenAscii.contains(c);
        const bool direction = c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E);
        const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
        const bool special = (c >= 0xFDD0 && c <= 0xFDEF) || (c >= 0xFFF0 && c <= 0xFFFF);
        const bool endOfPlane = c > 0x10000 && (c & 0xFFFF) >= 0xFFFE;
        return direction || surrogate || special || endOfPlane;
    }

    bool isContinuation(unsigned char byte)
    {
        return (byte & 0xC0) == 0x80;
    }

    // How many continuation bytes stand at an index and after it, counted up to a limit.
    std::size_t continuationsAt(std::string_view bytes, std::size_t index, std::size_t limit)
    {
        std::size_t count = 0;
        while (count < limit && index + count < bytes.size()
               && isContinuation(static_cast<unsigned char>(bytes[index + count])))
            ++count;
        return count;
    }

    // Whether each lead byte is followed by as many continuation bytes as it announces, and none
    // stands without one. More than four leading one bits count as four here.
    bool hasWholeSequences(std::string_view bytes)
    {
        for (std::size_t i = 0; i < bytes.size();) {
            const auto lead = static_cast<unsigned char>(bytes[i]);
            if (isContinuation(lead))
                return false;
            const auto ones = static_cast<std::size_t>(std::min(std::countl_one(lead), 4));
            const std::size_t expected = ones == 0 ? 0 : ones - 1;
            if (continuationsAt(bytes, i + 1, expected) != expected)
                return false;
            i += expected + 1;
        }
        return true;
    }

    // The length that a byte announces: 1 for ASCII, 2 to 6 for the lead bytes of the first UTF-8,
    // 0 for bytes that begin nothing.
    std::size_t announcedLength(unsigned char byte)
    {
        const auto ones = static_cast<std::size_t>(std::countl_one(byte));
        if (ones == 0)
            return 1;
        return ones >= 2 && ones <= 6 ? ones : 0;
    }

    // The value of each hexadecimal digit, and of every other byte a number that is no digit's.
    constexpr std::array<std::uint8_t, 0x100> DIGIT_VALUES = [] {
        std::array<std::uint8_t, 0x100> values{};
        for (char32_t c = 0; c < values.size(); ++c)
            values[c] =
                text::isHexDigit(c) ? static_cast<std::uint8_t>(text::hexDigitValue(c)) : 0xFF;
        return values;
    }();

    // Copies the bytes before the next "%", and moves both positions past them.
    void copyUnescaped(const char*& at, const char* end, char*& out) noexcept
    {
        const auto rest = static_cast<std::size_t>(end - at);
        const void* const escape = std::memchr(at, '%', rest);
        const std::size_t count =
            escape == nullptr ? rest
                              : static_cast<std::size_t>(static_cast<const char*>(escape) - at);
        std::memcpy(out, at, count);
        at += count;
        out += count;
    }

    // The value of the escape that begins here, or a number above 0xFF if none does.
    unsigned escapeAt(const char* at, const char* end) noexcept
    {
        constexpr unsigned NONE = 0x100;
        if (end - at < 3)
            return NONE;
        const unsigned high = DIGIT_VALUES[static_cast<unsigned char>(at[1])];
        const unsigned low = DIGIT_VALUES[static_cast<unsigned char>(at[2])];
        return (high | low) < 0x10 ? high * 0x10 + low : NONE;
    }

    void appendEscaped(std::string& result, char ascii)
    {
        const auto byte = static_cast<unsigned char>(ascii);
        result.append({'%', text::hexDigit(byte >> 4), text::hexDigit(byte & 0xFU)});
    }

    constexpr bool isShownInAscii(char c) noexcept
    {
        return c > 0x20 && c < 0x7F; // what is not ASCII is negative, or greater
    }

    // A byte as ASCII shows it: itself, or an escape.
    struct WrittenByte {
        char text[3];
        std::uint8_t length;
    };

    constexpr std::array<WrittenByte, 0x100> WRITTEN_BYTES = [] {
        std::array<WrittenByte, 0x100> all{};
        for (unsigned byte = 0; byte < all.size(); ++byte) {
            const char c = static_cast<char>(byte);
            if (isShownInAscii(c))
                all[byte] = {{c, '\0', '\0'}, 1};
            else
                all[byte] = {{'%', text::hexDigit(byte >> 4), text::hexDigit(byte & 0xFU)}, 3};
        }
        return all;
    }();

    template <class Unit>
    std::basic_string<Unit> withFixedEscapes(std::basic_string_view<Unit> text, bool escapeBrackets)
    {
        const auto isFixed = [text, escapeBrackets](std::size_t i) {
            const Unit c = text[i];
            return (c == Unit('%') && !text::isEscapeAt(text, i))
                   || (escapeBrackets && (c == Unit('[') || c == Unit(']')));
        };
        // Counted first: a text of many GiB has no room to grow in.
        std::size_t size = text.size();
        for (std::size_t i = 0; i < text.size(); ++i)
            size += isFixed(i) ? 2U : 0U;
        std::basic_string<Unit> result;
        result.reserve(size);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (isFixed(i))
                appendEscaped(result, text[i]);
            else
                result.push_back(text[i]);
        }
        return result;
    }

} // namespace

std::u32string protectEscapes(std::u32string_view text)
{
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == U'%' && text::isEscapeAt(text, i))
            result.append(U"%25");
        else
            result.push_back(text[i]);
    }
    return result;
}

std::u32string escapeMembers(std::u32string_view text, const AsciiSet& table)
{
    return escapeIf(text, [&table](char32_t c) { return table.contains(c); });
}

std::u32string escapePrivateUse(std::u32string_view text)
{
    return escapeIf(text, grammar::iprivate);
}

std::u32string escapeForbidden(std::u32string_view text)
{
    return escapeIf(text, isForbidden);
}

std::u32string encodeNonAscii(std::u32string_view text)
{
    const auto isShown = [](char32_t c) { return c > 0x20 && c < 0x7F; };
    // Every byte becomes three characters.
    std::size_t size = 0;
    for (const char32_t c : text)
        size += 1U + 2U * unsigned{!isShown(c)}
                + 3U * (unsigned{c >= 0x80} + unsigned{c >= 0x800} + unsigned{c >= 0x10000});
    std::u32string result(size, U'\0');
    char32_t* out = result.data();
    for (const char32_t c : text) {
        if (isShown(c))
            *out++ = c;
        else
            out = putEscaped(out, c);
    }
    return result;
}

std::string encodeNonAscii(std::string_view lax)
{
    std::size_t size = 0;
    for (const char c : lax)
        size += isShownInAscii(c) ? 1U : 3U;
    std::string result(size + sizeof(WrittenByte::text), '\0');
    char* out = result.data();
    for (const char c : lax) { // without a branch, since scripts and their delimiters alternate
        const WrittenByte& written = WRITTEN_BYTES[static_cast<unsigned char>(c)];
        std::memcpy(out, written.text, sizeof written.text);
        out += written.length;
    }
    result.resize(size);
    return result;
}

std::optional<std::u32string> decodeEscapes(std::u32string_view text, std::u32string_view keep)
{
    std::u32string result;
    result.reserve(text.size());
    auto first = text.begin();
    if (!grammar::percentDecode(first, text.end(), keep, result) || first != text.end())
        return std::nullopt;
    return result;
}

std::optional<std::string> decodeToUtf8(std::string_view utf8)
{
    if (utf8.empty()) // there may be nothing that it points to
        return std::string();
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    std::string result(utf8.size(), '\0');
    char* out = result.data();
    unsigned highest = 0;
    for (;;) {
        copyUnescaped(at, end, out);
        if (at == end)
            break;
        do { // an escape seldom comes alone
            // A branch, since the way on would wait for a choice.
            if (const unsigned value = escapeAt(at, end); value <= 0xFF) {
                *out++ = static_cast<char>(value);
                highest = std::max(highest, value);
                at += 3;
            } else {
                *out++ = *at++;
            }
        } while (at != end && *at == '%');
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    // A lead byte from F8 up stands for another one; see `text::decodeUtf8`.
    if (highest >= 0xF8
        || (highest >= 0x80 && text::wellFormedLength(std::string_view(result)) != result.size()))
        return std::nullopt;
    return result;
}

RepairedUtf8 repairUtf8(std::string bytes)
{
    if (hasWholeSequences(bytes))
        return {std::move(bytes), false};
    std::string result;
    result.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = announcedLength(byte);
        if (length > 0 && continuationsAt(bytes, i + 1, length - 1) == length - 1) {
            result.append(bytes, i, length);
            i += length;
        } else {
            result.append({'%', text::hexDigit(byte >> 4), text::hexDigit(byte & 0xFU)});
            ++i;
        }
    }
    return {std::move(result), true};
}

std::u32string fixEscapes(std::u32string_view text, bool escapeBrackets)
{
    return withFixedEscapes(text, escapeBrackets);
}

std::string fixEscapes(std::string_view text, bool escapeBrackets)
{
    return withFixedEscapes(text, escapeBrackets);
}

} // namespace foundation::network::iri
