#pragma once

#include <string>

/// Texts as the test's programs print them for the scripts that read them.
namespace foundation::network::tests {

/// A JSON string of UTF-16; everything but ASCII is escaped, unit for unit.
inline std::string jsonText(const std::u16string& text)
{
    const std::string digits = "0123456789abcdef";
    std::string result = "\"";
    for (const unsigned unit : text) {
        if (unit >= 0x20 && unit < 0x7F && unit != '"' && unit != '\\') {
            result += static_cast<char>(unit);
            continue;
        }
        result += "\\u";
        for (const unsigned shift : {12U, 8U, 4U, 0U})
            result += digits[(unit >> shift) & 0xFU];
    }
    return result + '"';
}

/// A JSON string of bytes, each of which stands for the character of its number.
inline std::string jsonText(const std::string& text)
{
    std::u16string wide;
    for (const char c : text)
        wide += static_cast<char16_t>(static_cast<unsigned char>(c));
    return jsonText(wide);
}

/// A JSON array of what @p print gives for each element.
template <class Range, class Print>
std::string jsonArray(const Range& range, Print print)
{
    std::string result = "[";
    for (const auto& element : range)
        result += (result.size() == 1 ? "" : ",") + print(element);
    return result + "]";
}

} // namespace foundation::network::tests
