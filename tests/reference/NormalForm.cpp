#include "reference/NormalForm.hpp"

#include "reference/StrictResolver.hpp"

#include <algorithm>
#include <cstddef>
#include <regex>

namespace foundation::network::tests {

namespace {

    bool isDigit(char c)
    {
        return c >= '0' && c <= '9';
    }

    char lowered(char c)
    {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }

    bool isHexDigit(char c)
    {
        return isDigit(c) || (lowered(c) >= 'a' && lowered(c) <= 'f');
    }

    bool isEscapeAt(const std::string& text, std::size_t at)
    {
        return at + 2 < text.size() && text[at] == '%' && isHexDigit(text[at + 1])
               && isHexDigit(text[at + 2]);
    }

    // RFC 3986, 2.3
    bool isUnreserved(char c)
    {
        return isDigit(c) || (lowered(c) >= 'a' && lowered(c) <= 'z')
               || std::string("-._~").find(c) != std::string::npos;
    }

    std::string escaped(char c)
    {
        const char* const digits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(c);
        return {'%', digits[byte / 16], digits[byte % 16]};
    }

    std::string lowered(std::string text)
    {
        std::transform(text.begin(), text.end(), text.begin(), [](char c) { return lowered(c); });
        return text;
    }

    // RFC 3986, 6.2.2.1, for scheme and host, and 3.2.3: a port is a number.
    std::string withFoldedFront(const std::string& text)
    {
        static const std::regex front(
            "^([^:/?#]*:)?(?://([^/?#@]*@)?([^/?#]*?)(?::0*([0-9]+))?(?=[/?#]|$))?");
        std::smatch found;
        std::regex_search(text, found, front); // finds something in any text, be it nothing
        std::string result = lowered(found.str(1));
        if (found[3].matched)
            result += "//" + found.str(2) + lowered(found.str(3));
        if (found[4].matched)
            result += ':' + found.str(4);
        return result + found.suffix().str();
    }

    // RFC 3986, 6.2.2.2; RFC 3987, 5.3.2.3, in the direction that always succeeds.
    std::string withNormalEscapes(const std::string& text)
    {
        std::string result;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (isEscapeAt(text, i)) {
                const char c = static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
                result += isUnreserved(c) ? std::string(1, c) : escaped(c);
                i += 2;
            } else {
                const bool isAscii = static_cast<unsigned char>(text[i]) < 0x80;
                result += isAscii ? std::string(1, text[i]) : escaped(text[i]);
            }
        }
        return result;
    }

} // namespace

std::string normalForm(const std::string& text)
{
    // A host is folded once its letters are no escapes any more; its other escapes become capitals
    // again.
    const std::string folded = withNormalEscapes(withFoldedFront(withNormalEscapes(text)));
    return strictlyResolved(folded, "base://host/a/b");
}

bool hasSoundEscapes(const std::string& text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '%' && !isEscapeAt(text, i))
            return false;
    static const std::regex literal(
        "^([^:/?#]*:)?//([^/?#@]*@)?\\[[^\\]/?#]*\\](:[0-9]*)?(?=[/?#]|$)");
    return std::regex_replace(text, literal, "").find_first_of("[]") == std::string::npos;
}

} // namespace foundation::network::tests
