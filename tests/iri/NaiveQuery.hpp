#pragma once

#include <string>

namespace foundation::network::tests {

/// The text with the escapes undone that stand in it.
inline std::string unescaped(const std::string& text)
{
    const auto digit = [&text](std::size_t index) {
        const std::string digits = "0123456789ABCDEFabcdef";
        const std::size_t found = index < text.size() ? digits.find(text[index]) : digits.npos;
        return found == digits.npos ? -1 : static_cast<int>(found < 16 ? found : found - 6);
    };
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && digit(i + 1) >= 0 && digit(i + 2) >= 0) {
            result.push_back(static_cast<char>(digit(i + 1) * 16 + digit(i + 2)));
            i += 2;
        } else {
            result.push_back(text[i]);
        }
    }
    return result;
}

} // namespace foundation::network::tests
