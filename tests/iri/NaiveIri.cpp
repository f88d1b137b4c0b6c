#include "iri/NaiveIri.hpp"

#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <regex>

namespace foundation::network::tests {

using iri::Encoding;

namespace {

    bool isContinuation(char byte)
    {
        return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
    }

    std::size_t leadingOnes(char byte)
    {
        std::size_t ones = 0;
        for (unsigned bit = 0x80; bit != 0 && (static_cast<unsigned char>(byte) & bit) != 0;
             bit /= 2)
            ++ones;
        return ones;
    }

    std::string escape(char byte)
    {
        constexpr const char* digits = "0123456789ABCDEF";
        const auto value = static_cast<unsigned char>(byte);
        return {'%', digits[value / 16], digits[value % 16]};
    }

    template <class Char>
    bool isHex(Char c)
    {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
    }

    template <class Text>
    bool isEscape(const Text& text, std::size_t at)
    {
        return text[at] == '%' && at + 2 < text.size() && isHex(text[at + 1])
               && isHex(text[at + 2]);
    }

    // Every escape becomes the element of its value.
    template <class Text>
    Text unescaped(const Text& text)
    {
        Text result;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (!isEscape(text, i)) {
                result.push_back(text[i]);
                continue;
            }
            const std::string digits{static_cast<char>(text[i + 1]),
                                     static_cast<char>(text[i + 2])};
            result.push_back(
                static_cast<typename Text::value_type>(std::stoi(digits, nullptr, 16)));
            i += 2;
        }
        return result;
    }

    // Looks from the end backwards whether each lead byte has the continuation bytes it announces.
    bool isWhole(const std::string& bytes)
    {
        std::size_t continuations = 0;
        for (std::size_t i = bytes.size(); i-- > 0;) {
            if (isContinuation(bytes[i])) {
                ++continuations;
                continue;
            }
            const std::size_t ones = std::min<std::size_t>(leadingOnes(bytes[i]), 4);
            if (continuations != (ones == 0 ? 0 : ones - 1))
                return false;
            continuations = 0;
        }
        return continuations == 0;
    }

    // Each byte that belongs to no whole sequence becomes an escape; sequences of the first UTF-8
    // with five and six bytes count as whole.
    std::string withEscapedRests(const std::string& bytes)
    {
        std::string result;
        for (std::size_t i = 0; i < bytes.size();) {
            const std::size_t ones = leadingOnes(bytes[i]);
            std::size_t length = ones == 0 ? 1 : ones >= 2 && ones <= 6 ? ones : 0;
            for (std::size_t k = 1; k < length; ++k)
                if (i + k >= bytes.size() || !isContinuation(bytes[i + k]))
                    length = 0;
            result += length == 0 ? escape(bytes[i]) : bytes.substr(i, length);
            i += length == 0 ? 1 : length;
        }
        return result;
    }

    // Reads UTF-8 in which a lead byte from F8 up counts as one of four bytes.
    std::optional<std::u32string> strictlyRead(const std::string& bytes)
    {
        constexpr std::array<std::uint64_t, 4> limits{0x7F, 0x7FF, 0xFFFF, 0x1FFFFF};
        std::u32string result;
        for (std::size_t i = 0; i < bytes.size();) {
            const std::size_t ones = std::min<std::size_t>(leadingOnes(bytes[i]), 4);
            const std::size_t more = ones == 0 ? 0 : ones - 1;
            if (ones == 1 || i + more >= bytes.size())
                return std::nullopt;
            std::uint64_t value = static_cast<unsigned char>(bytes[i]);
            for (std::size_t k = 1; k <= more; ++k) {
                if (!isContinuation(bytes[i + k]))
                    return std::nullopt;
                value = value * 64 + static_cast<unsigned char>(bytes[i + k]) % 64;
            }
            value &= limits[more];
            const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
            if (value > 0x10FFFF || isSurrogate || (more > 0 && value <= limits[more - 1]))
                return std::nullopt;
            result.push_back(static_cast<char32_t>(value));
            i += more + 1;
        }
        return result;
    }

    std::string utf8(const std::u32string& text)
    {
        std::string result;
        const auto add = [&result](char32_t value) { result.push_back(static_cast<char>(value)); };
        for (const char32_t c : text) {
            if (c < 0x80) {
                add(c);
                continue;
            }
            if (c < 0x800) {
                add(0xC0 + c / 0x40);
            } else {
                if (c < 0x10000) {
                    add(0xE0 + c / 0x1000);
                } else {
                    add(0xF0 + c / 0x40000);
                    add(0x80 + c / 0x1000 % 0x40);
                }
                add(0x80 + c / 0x40 % 0x40);
            }
            add(0x80 + c % 0x40);
        }
        return result;
    }

    std::optional<std::string> decoded(const std::string& component)
    {
        const std::string bytes = unescaped(component);
        if (isWhole(bytes)) {
            const auto text = strictlyRead(bytes);
            return text ? std::optional(utf8(*text)) : std::nullopt;
        }
        const auto text = strictlyRead(withEscapedRests(bytes));
        return text ? std::optional(utf8(unescaped(*text))) : std::nullopt;
    }

    std::string ascii(const std::string& component)
    {
        std::string result;
        for (const char byte : component) {
            const auto value = static_cast<unsigned char>(byte);
            result += value <= 0x20 || value >= 0x7F ? escape(byte) : std::string(1, byte);
        }
        return result;
    }

    bool isStrict(Encoding form)
    {
        return form == Encoding::IriStrict || form == Encoding::AsciiStrict;
    }

} // namespace

std::u32string codePoints(std::string_view utf8)
{
    return strictlyRead(std::string(utf8)).value();
}

std::u16string utf16(std::string_view utf8)
{
    std::u16string result;
    for (const char32_t c : codePoints(utf8)) {
        if (c < 0x10000) {
            result.push_back(static_cast<char16_t>(c));
        } else {
            result.push_back(static_cast<char16_t>(0xD800 + (c - 0x10000) / 0x400));
            result.push_back(static_cast<char16_t>(0xDC00 + (c - 0x10000) % 0x400));
        }
    }
    return result;
}

NaiveIri::NaiveIri(const std::string& text)
{
    // RFC 3986, appendix B.
    static const std::regex expression(
        "^(([^:/?#]+):)?(//([^/?#]*))?([^?#]*)(\\?([^#]*))?(#(.*))?");
    std::smatch match;
    std::regex_match(text, match, expression);
    const auto group = [&match](std::size_t whole, std::size_t inner) {
        return match[whole].matched ? std::optional(match[inner].str()) : std::nullopt;
    };
    scheme = group(1, 2);
    path = match[5].str();
    query = group(6, 7);
    fragment = group(8, 9);

    const auto authority = group(3, 4);
    if (!authority)
        return;
    // RFC 3986, 3.2: [ userinfo "@" ] host [ ":" port ], where the colons of a literal do not
    // count.
    static const std::regex expressionOfAuthority("^(([^@]*)@)?(\\[[^\\]]*\\]|[^:]*)(:(.*))?");
    std::regex_match(*authority, match, expressionOfAuthority);
    userInfo = group(1, 2);
    host = match[3].str();
    port = group(4, 5);
}

std::string NaiveIri::authority(Encoding form) const
{
    std::string result = userInfo ? *converted(*userInfo, form) + "@" : "";
    result += *converted(*host, form);
    if (isStrict(form))
        result = repaired(result, false);
    return port ? result + ":" + *port : result;
}

std::string NaiveIri::print(Encoding form, Encoding authorityForm) const
{
    const auto shown = [form](const std::string& component) {
        const std::string text = *converted(component, form);
        return isStrict(form) ? repaired(text, true) : text;
    };
    return (scheme ? *scheme + ":" : "") + (host ? "//" + authority(authorityForm) : "")
           + shown(path) + (query ? "?" + shown(*query) : "")
           + (fragment ? "#" + shown(*fragment) : "");
}

std::optional<std::string> converted(const std::string& component, Encoding form)
{
    switch (form) {
    case Encoding::Decoded:
        return decoded(component);
    case Encoding::Iri:
    case Encoding::IriStrict:
        return component;
    default:
        return ascii(component);
    }
}

std::string repaired(const std::string& text, bool brackets)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool bracket = text[i] == '[' || text[i] == ']';
        if ((text[i] == '%' && !isEscape(text, i)) || (brackets && bracket))
            result += escape(text[i]);
        else
            result += text[i];
    }
    return result;
}

std::uint64_t naiveHash(std::string_view utf8)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char32_t unit : codePoints(utf8))
        for (int byte = 0; byte < 4; ++byte) {
            hash ^= unit >> (8 * byte) & 0xFF;
            hash *= 0x100000001b3U;
        }
    return hash;
}

} // namespace foundation::network::tests
