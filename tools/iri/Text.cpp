#include "Text.hpp"

#include <algorithm>
#include <array>
#include <iterator>

namespace tool::text {
namespace {

    constexpr std::size_t EXCERPT_LENGTH = 120;

    struct Character {
        char32_t value;
        std::size_t length; // in bytes; 0 if there is no valid sequence
    };

    constexpr Character INVALID{0, 0};

    unsigned byteAt(std::string_view text, std::size_t index) noexcept
    {
        return static_cast<unsigned char>(text[index]);
    }

    bool isPlain(char byte) noexcept
    {
        return byte >= ' ' && byte <= '~' && byte != '\\';
    }

    // RFC 3629, 4:  UTF8-octets, whose second byte is what rules out overlong forms, surrogates and
    // what lies above U+10FFFF.
    Character characterAt(std::string_view text, std::size_t index) noexcept
    {
        const unsigned lead = byteAt(text, index);
        if (lead < 0x80)
            return {lead, 1};
        if (lead < 0xC2 || lead > 0xF4)
            return INVALID;

        const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (text.size() - index < length)
            return INVALID;

        unsigned lowest = 0x80;
        unsigned highest = 0xBF;
        if (lead == 0xE0)
            lowest = 0xA0;
        else if (lead == 0xED)
            highest = 0x9F;
        else if (lead == 0xF0)
            lowest = 0x90;
        else if (lead == 0xF4)
            highest = 0x8F;

        char32_t value = lead & (0x7FU >> length);
        for (std::size_t i = 1; i < length; ++i) {
            const unsigned next = byteAt(text, index + i);
            if (next < lowest || next > highest)
                return INVALID;
            lowest = 0x80;
            highest = 0xBF;
            value = value << 6 | (next & 0x3F);
        }
        return {value, length};
    }

    void appendHex(std::string& result, char32_t value, std::size_t leastDigits)
    {
        constexpr std::string_view DIGITS = "0123456789ABCDEF";
        std::array<char, 8> digits{};
        std::size_t count = 0;
        for (; value != 0 || count < leastDigits; value >>= 4)
            digits.at(count++) = DIGITS[value & 0xF];
        result.append(std::make_reverse_iterator(digits.begin() + count), digits.rend());
    }

    void appendByteEscape(std::string& result, unsigned byte)
    {
        result.append("\\x");
        appendHex(result, byte, 2);
    }

    void appendEscape(std::string& result, char32_t character)
    {
        switch (character) {
        case U'\n':
            result.append("\\n");
            return;
        case U'\r':
            result.append("\\r");
            return;
        case U'\t':
            result.append("\\t");
            return;
        default:
            result.append("\\u{");
            appendHex(result, character, 1);
            result.push_back('}');
        }
    }

    // RFC 8259, 7: a character outside the Basic Multilingual Plane is escaped as a surrogate pair.
    void appendJsonEscape(std::string& result, char32_t character)
    {
        if (character > 0xFFFF) {
            appendJsonEscape(result, 0xD7C0 + (character >> 10));
            appendJsonEscape(result, 0xDC00 + (character & 0x3FF));
            return;
        }
        result.append("\\u");
        appendHex(result, character, 4);
    }

    bool isSurrogate(char32_t unit) noexcept
    {
        return unit >= 0xD800 && unit <= 0xDFFF;
    }

    // RFC 3629, 3:  the lead byte says how many others follow, each of which carries six bits.
    void appendUtf8(std::string& result, char32_t character)
    {
        const auto append = [&result](char32_t byte) { result.push_back(static_cast<char>(byte)); };
        const auto appendRest = [&](int bits) {
            while ((bits -= 6) >= 0)
                append(0x80 | ((character >> bits) & 0x3F));
        };
        if (character < 0x80) {
            append(character);
        } else if (character < 0x800) {
            append(0xC0 | (character >> 6));
            appendRest(6);
        } else if (character < 0x10000) {
            append(0xE0 | (character >> 12));
            appendRest(12);
        } else {
            append(0xF0 | (character >> 18));
            appendRest(18);
        }
    }

    /// Appends what of @p text comes before the end or the length, counted in characters.
    /// @returns how many bytes that took
    std::size_t appendPrintable(std::string& result, std::string_view text,
                                std::size_t mostCharacters)
    {
        std::size_t index = 0;
        for (std::size_t count = 0; index < text.size() && count < mostCharacters; ++count) {
            if (isPlain(text[index])) {
                result.push_back(text[index++]);
                continue;
            }
            const auto [character, length] = characterAt(text, index);
            if (length == 0)
                appendByteEscape(result, byteAt(text, index));
            else if (character == U'\\')
                result.append("\\\\");
            else if (isUnprintable(character))
                appendEscape(result, character);
            else
                result.append(text, index, length);
            index += std::max<std::size_t>(length, 1);
        }
        return index;
    }

} // namespace

std::size_t findInvalidUtf8(std::string_view text) noexcept
{
    for (std::size_t index = 0; index < text.size();) {
        if (byteAt(text, index) < 0x80) {
            ++index;
            continue;
        }
        const std::size_t length = characterAt(text, index).length;
        if (length == 0)
            return index;
        index += length;
    }
    return std::string_view::npos;
}

std::string describeInvalidUtf8(std::string_view text)
{
    const std::size_t invalid = findInvalidUtf8(text);
    if (invalid == std::string_view::npos)
        return "";
    return "not valid UTF-8 at byte " + std::to_string(invalid);
}

std::u16string toUtf16(std::string_view text)
{
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const auto [character, length] = characterAt(text, index);
        if (character > 0xFFFF) {
            result.push_back(static_cast<char16_t>(0xD7C0 + (character >> 10)));
            result.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
        } else {
            result.push_back(static_cast<char16_t>(character));
        }
        index += length;
    }
    return result;
}

std::string toUtf8(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char32_t unit = text[index];
        const char32_t next = index + 1 < text.size() ? text[index + 1] : U'\0';
        if (!isSurrogate(unit)) {
            appendUtf8(result, unit);
        } else if (unit < 0xDC00 && isSurrogate(next) && next >= 0xDC00) {
            appendUtf8(result, ((unit - 0xD7C0) << 10) + (next & 0x3FF));
            ++index;
        } else {
            appendUtf8(result, U'\uFFFD');
        }
    }
    return result;
}

bool isUnprintable(char32_t character) noexcept
{
    struct Range {
        char32_t first;
        char32_t last;
    };
    // Categories Cc, Cf, Zl and Zp but for the joiners, and the noncharacters of the first plane.
    // Whole blocks stand for format characters where nothing else is in them.
    static constexpr Range UNPRINTABLE[] = {
        {0x0000, 0x001F},   {0x007F, 0x009F},   {0x00AD, 0x00AD},   {0x0600, 0x0605},
        {0x061C, 0x061C},   {0x06DD, 0x06DD},   {0x070F, 0x070F},   {0x0890, 0x0891},
        {0x08E2, 0x08E2},   {0x180E, 0x180E},   {0x200B, 0x200B},   {0x200E, 0x200F},
        {0x2028, 0x202E},   {0x2060, 0x206F},   {0xFDD0, 0xFDEF},   {0xFEFF, 0xFEFF},
        {0xFFF0, 0xFFFB},   {0xFFFE, 0xFFFF},   {0x110BD, 0x110BD}, {0x110CD, 0x110CD},
        {0x13430, 0x1343F}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE007F},
    };

    const auto* const range =
        std::lower_bound(std::begin(UNPRINTABLE), std::end(UNPRINTABLE), character,
                         [](const Range& each, char32_t value) { return each.last < value; });
    if (range != std::end(UNPRINTABLE) && character >= range->first)
        return true;
    return (character & 0xFFFE) == 0xFFFE;
}

void appendPrintable(std::string& result, std::string_view text)
{
    if (std::all_of(text.begin(), text.end(), isPlain))
        result.append(text);
    else
        appendPrintable(result, text, std::string_view::npos);
}

std::string excerpt(std::string_view text)
{
    std::string result;
    const std::size_t shown = appendPrintable(result, text, EXCERPT_LENGTH);
    if (shown < text.size())
        result.append("... (").append(std::to_string(text.size())).append(" bytes)");
    return result;
}

void appendEscapedBytes(std::string& result, std::string_view bytes)
{
    for (std::size_t index = 0; index < bytes.size();) {
        const std::size_t length = characterAt(bytes, index).length;
        if (length == 0)
            appendByteEscape(result, byteAt(bytes, index));
        else if (bytes[index] == '\\')
            result.append("\\\\");
        else
            result.append(bytes, index, length);
        index += std::max<std::size_t>(length, 1);
    }
}

void appendPercentEscaped(std::string& result, std::string_view bytes)
{
    for (;;) {
        const std::size_t invalid = findInvalidUtf8(bytes);
        result.append(bytes.substr(0, invalid));
        if (invalid == std::string_view::npos)
            return;
        result.push_back('%');
        appendHex(result, byteAt(bytes, invalid), 2);
        bytes.remove_prefix(invalid + 1);
    }
}

void appendPrintableJson(std::string& result, std::string_view json)
{
    // All that stays is copied in one piece as far as it goes.
    std::size_t copied = 0;
    for (std::size_t index = 0; index < json.size();) {
        const bool isAscii = byteAt(json, index) < 0x7F;
        const auto [character, length] = isAscii ? Character{0, 1} : characterAt(json, index);
        const std::size_t next = index + std::max<std::size_t>(length, 1);
        if (!isAscii && isUnprintable(character)) {
            result.append(json, copied, index - copied);
            appendJsonEscape(result, character);
            copied = next;
        }
        index = next;
    }
    result.append(json, copied);
}

} // namespace tool::text
