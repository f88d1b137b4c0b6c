#include "iri/NaiveCoding.hpp"

#include "text/NaiveUtf8.hpp"

#include <foundation/core/except/Exception.hpp>

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <stdexcept>

namespace foundation::network::iri::naive {

namespace {

    struct Range {
        char32_t first;
        char32_t last;
    };

    template <std::size_t SIZE>
    bool isIn(const Range (&ranges)[SIZE], char32_t c)
    {
        return std::any_of(std::begin(ranges), std::end(ranges),
                           [c](const Range& range) { return c >= range.first && c <= range.last; });
    }

    constexpr Range privateUse[] = {
        {0xE000, 0xF8FF}, {0xE0000, 0xE0FFF}, {0xF0000, 0xFFFFD}, {0x100000, 0x10FFFD}};

    constexpr Range forbidden[] = {
        {0x0000, 0x001F}, {0x007F, 0x009F}, {0x200E, 0x200F}, {0x202A, 0x202E},
        {0xD800, 0xDFFF}, {0xFDD0, 0xFDEF}, {0xFFF0, 0xFFFF},
    };

    std::string utf8OrThrow(char32_t c)
    {
        if (c > 0x10FFFF) {
            char shown[16];
            std::snprintf(shown, sizeof shown, "0x%x", static_cast<unsigned>(c));
            boost::throw_exception(
                std::out_of_range(std::string("Invalid UTF-32 code point U+") + shown
                                  + " encountered while trying to encode UTF-16 sequence"));
        }
        return tests::writeUtf8(c);
    }

    Text readUtf8OrThrow(const std::string& bytes)
    {
        if (const auto read = tests::readUtf8(bytes))
            return *read;
        throw core::except::AnonymousInternalException<std::exception>(std::runtime_error(
            "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"));
    }

    Text escapeOfByte(unsigned char byte)
    {
        const char32_t* const digits = U"0123456789ABCDEF";
        return {U'%', digits[byte / 16], digits[byte % 16]};
    }

    template <class Predicate>
    Text escapeEach(const Text& text, Predicate predicate)
    {
        Text result;
        for (const char32_t c : text)
            result += predicate(c) ? escaped(c) : Text(1, c);
        return result;
    }

    std::string narrowed(const Text& elements)
    {
        std::string bytes;
        for (const char32_t element : elements)
            bytes.push_back(static_cast<char>(element % 256));
        return bytes;
    }

    bool isContinuation(const std::string& bytes, std::size_t index)
    {
        return index < bytes.size()
               && tests::leadingOnes(static_cast<unsigned char>(bytes[index])) == 1;
    }

    // Looks at the bytes from the end: each lead byte must have as many continuations as it says.
    bool isWhole(const std::string& bytes)
    {
        int continuations = 0;
        for (std::size_t left = bytes.size(); left > 0; --left) {
            const int ones = tests::leadingOnes(static_cast<unsigned char>(bytes[left - 1]));
            if (ones == 1) {
                ++continuations;
                continue;
            }
            const int length = ones == 0 ? 1 : std::min(ones, 4);
            if (continuations != length - 1)
                return false;
            continuations = 0;
        }
        return continuations == 0;
    }

    Text escapeColonsBeforeFirstSlash(const Text& path)
    {
        if (path.empty() || path.front() == U'/')
            return path;
        Text result;
        bool inFirstSegment = true;
        for (const char32_t c : path) {
            if (c == U'/')
                inFirstSegment = false;
            result += inFirstSegment && c == U':' ? Text(U"%3A") : Text(1, c);
        }
        return result;
    }

    bool isAlone(Component component, const Context& context)
    {
        return component == Component::Path && !context.schemePresent && !context.userInfoPresent
               && !context.hostPresent;
    }

    bool isForm(Component component, const Context& context)
    {
        return component == Component::Query && context.formEncoded;
    }

    Table tableOf(Component component)
    {
        switch (component) {
        case Component::UserInfo:
            return userInfoTable;
        case Component::Host:
            return hostTable;
        case Component::Path:
            return pathTable;
        case Component::Query:
            return queryTable;
        case Component::Fragment:
            break;
        }
        return fragmentTable;
    }

    std::u32string_view keepOf(Component component)
    {
        switch (component) {
        case Component::UserInfo:
            return userInfoKeep;
        case Component::Host:
            return hostKeep;
        case Component::Path:
            return pathKeep;
        case Component::Query:
            return queryKeep;
        case Component::Fragment:
            break;
        }
        return fragmentKeep;
    }

    // A query keeps its private use characters.
    Text escapePrivateUseUnlessQuery(Component component, const Text& text)
    {
        return component == Component::Query ? text : escapePrivateUse(text);
    }

} // namespace

bool isAsciiHexDigit(char32_t c)
{
    return std::u32string_view(U"0123456789abcdefABCDEF").find(c) != std::u32string_view::npos;
}

bool isPrivateUse(char32_t c)
{
    return isIn(privateUse, c);
}

bool isForbidden(char32_t c)
{
    if (std::u32string_view(U"\"<>\\^`{|}").find(c) != std::u32string_view::npos)
        return true;
    if (isIn(forbidden, c))
        return true;
    return c > 0x10000 && (c % 0x10000 == 0xFFFE || c % 0x10000 == 0xFFFF);
}

Text escaped(char32_t c)
{
    Text result;
    for (const char byte : utf8OrThrow(c))
        result += escapeOfByte(static_cast<unsigned char>(byte));
    return result;
}

Text protectEscapes(const Text& text)
{
    Text result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == U'%' && i + 2 < text.size() && isAsciiHexDigit(text[i + 1])
                              && isAsciiHexDigit(text[i + 2]);
        result += isEscape ? Text(U"%25") : Text(1, text[i]);
    }
    return result;
}

Text applyTable(const Text& text, const Table& table)
{
    Text result;
    for (const char32_t c : text) {
        const auto* row = std::find_if(table.begin(), table.end(),
                                       [c](const Replacement& r) { return r.character == c; });
        result += row != table.end() ? Text(row->replacement) : Text(1, c);
    }
    return result;
}

Text escapePrivateUse(const Text& text)
{
    return escapeEach(text, isPrivateUse);
}

Text escapeForbidden(const Text& text)
{
    return escapeEach(text, isForbidden);
}

Text encodeNonAscii(const Text& text)
{
    std::string bytes;
    for (const char32_t c : text)
        bytes += utf8OrThrow(c);
    Text result;
    for (const char narrow : bytes) {
        const auto byte = static_cast<unsigned char>(narrow);
        result += byte <= 0x20 || byte >= 0x7F ? escapeOfByte(byte) : Text(1, byte);
    }
    return result;
}

MaybeText decodeEscapes(const Text& text, std::u32string_view keep)
{
    const auto valueOf = [](char32_t digit) {
        const auto index = std::u32string_view(U"0123456789ABCDEFabcdef").find(digit);
        return static_cast<char32_t>(index < 16 ? index : index - 6);
    };
    Text result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == U'%' && i + 2 < text.size() && isAsciiHexDigit(text[i + 1])
            && isAsciiHexDigit(text[i + 2])) {
            const char32_t value = valueOf(text[i + 1]) * 16 + valueOf(text[i + 2]);
            if (keep.find(value) == keep.npos) {
                result.push_back(value);
                i += 2;
                continue;
            }
        }
        if (text[i] > 0x10FFFF)
            return std::nullopt;
        result.push_back(text[i]);
    }
    return text.empty() ? std::nullopt : MaybeText(result);
}

Text fixEscapes(const Text& text, bool escapeBrackets)
{
    Text result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        if (c != U'%') {
            const bool isBracket = c == U'[' || c == U']';
            result += escapeBrackets && isBracket ? escaped(c) : Text(1, c);
            continue;
        }
        const std::size_t following = text.size() - i - 1;
        const bool isEscape =
            following >= 2 && isAsciiHexDigit(text[i + 1]) && isAsciiHexDigit(text[i + 2]);
        result += isEscape ? U"%" : U"%25";
    }
    return result;
}

Repaired repairUtf8(const std::string& bytes)
{
    if (isWhole(bytes))
        return {bytes, false};
    std::string result;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const int ones = tests::leadingOnes(byte);
        std::size_t length = 0;
        if (ones == 0)
            length = 1;
        else if (ones >= 2 && ones <= 6)
            length = static_cast<std::size_t>(ones);
        bool isSequence = length > 0;
        for (std::size_t k = 1; k < length; ++k)
            isSequence = isSequence && isContinuation(bytes, i + k);
        if (isSequence) {
            result += bytes.substr(i, length);
            i += length;
        } else {
            for (const char32_t c : escapeOfByte(byte))
                result.push_back(static_cast<char>(c));
            ++i;
        }
    }
    return {result, true};
}

MaybeText decodedToIri(Component component, const Text& text, const Context& context)
{
    Text result = text;
    if (isForm(component, context)) {
        result = applyTable(result, formTable);
    } else {
        result = protectEscapes(result);
        result = applyTable(result, tableOf(component));
    }
    result = escapePrivateUseUnlessQuery(component, result);
    result = escapeForbidden(result);
    return isAlone(component, context) ? escapeColonsBeforeFirstSlash(result) : result;
}

MaybeText iriToAscii(Component, const Text& text, const Context&)
{
    return encodeNonAscii(text);
}

MaybeText decodedToAscii(Component component, const Text& text, const Context& context)
{
    return encodeNonAscii(*decodedToIri(component, text, context));
}

MaybeText iriToDecoded(Component component, const Text& text, const Context& context)
{
    const Text ascii = encodeNonAscii(text);
    if (isForm(component, context))
        return ascii;
    const MaybeText decoded = decodeEscapes(ascii, {});
    if (!decoded)
        return std::nullopt;
    const Repaired repaired = repairUtf8(narrowed(*decoded));
    const Text read = readUtf8OrThrow(repaired.bytes);
    return repaired.repaired ? decodeEscapes(read, {}) : MaybeText(read);
}

MaybeText asciiToIri(Component component, const Text& text, const Context& context)
{
    const MaybeText decoded = decodeEscapes(text, keepOf(component));
    if (!decoded)
        return std::nullopt;
    if (isForm(component, context))
        return text;
    Text result = readUtf8OrThrow(repairUtf8(narrowed(*decoded)).bytes);
    if (isAlone(component, context))
        result = escapeColonsBeforeFirstSlash(result);
    result = escapePrivateUseUnlessQuery(component, result);
    return escapeForbidden(result);
}

MaybeText asciiToDecoded(Component component, const Text& text, const Context& context)
{
    const MaybeText iri = asciiToIri(component, text, context);
    return iri ? iriToDecoded(component, *iri, context) : std::nullopt;
}

} // namespace foundation::network::iri::naive
