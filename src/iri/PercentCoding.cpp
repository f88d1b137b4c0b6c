#include "iri/PercentCoding.hpp"

#include "iri/grammar/Characters.hpp"
#include "iri/grammar/PercentDecodeGrammar.hpp"
#include "text/HexDigits.hpp"
#include "text/Utf.hpp"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>

namespace foundation::network::iri {

namespace {

    void appendEscape(std::u32string& result, unsigned char byte)
    {
        result.push_back(U'%');
        result.push_back(static_cast<unsigned char>(text::hexDigit(byte >> 4)));
        result.push_back(static_cast<unsigned char>(text::hexDigit(byte & 0xFU)));
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
        size +=
            isShown(c)
                ? 1U
                : 3U + 3U * (unsigned{c >= 0x80} + unsigned{c >= 0x800} + unsigned{c >= 0x10000});
    std::u32string result(size, U'\0');
    char32_t* out = result.data();
    for (const char32_t c : text) {
        if (isShown(c)) {
            *out++ = c;
            continue;
        }
        const text::Utf8Sequence utf8 = text::encodeUtf8(c);
        for (unsigned i = 0; i < utf8.length; ++i) {
            const auto byte = static_cast<unsigned char>(utf8.bytes[i]);
            *out++ = U'%';
            *out++ = static_cast<unsigned char>(text::hexDigit(byte >> 4));
            *out++ = static_cast<unsigned char>(text::hexDigit(byte & 0xFU));
        }
    }
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
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        const bool barePercent = c == U'%' && !text::isEscapeAt(text, i);
        const bool bracket = escapeBrackets && (c == U'[' || c == U']');
        if (barePercent || bracket)
            appendEscaped(result, c);
        else
            result.push_back(c);
    }
    return result;
}

} // namespace foundation::network::iri
