#include "WideText.hpp"

#include <windows.h>

namespace tool::system {
namespace {

    constexpr char32_t FIRST_SUPPLEMENTARY = 0x10000;

    bool isSurrogate(char32_t unit, char32_t first) noexcept
    {
        return (unit & 0xFC00U) == first;
    }

    void append(std::string& result, char32_t codePoint)
    {
        const auto put = [&](char32_t lead, int shift) {
            result.push_back(static_cast<char>(lead | (codePoint >> shift)));
            while (shift != 0) {
                shift -= 6;
                result.push_back(static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU)));
            }
        };
        if (codePoint < 0x80)
            put(0, 0);
        else if (codePoint < 0x800)
            put(0xC0, 6);
        else if (codePoint < FIRST_SUPPLEMENTARY)
            put(0xE0, 12);
        else
            put(0xF0, 18);
    }

} // namespace

std::string toUtf8(std::wstring_view wide)
{
    std::string result;
    result.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        char32_t codePoint = wide[i];
        if (isSurrogate(codePoint, 0xD800) && i + 1 < wide.size()
            && isSurrogate(wide[i + 1], 0xDC00))
            codePoint = FIRST_SUPPLEMENTARY + ((codePoint & 0x3FFU) << 10) + (wide[++i] & 0x3FFU);
        append(result, codePoint);
    }
    return result;
}

std::wstring toWide(std::string_view utf8)
{
    const auto size = static_cast<int>(utf8.size());
    std::wstring result(utf8.size(), L'\0'); // a byte never becomes more than a unit
    const auto room = static_cast<int>(result.size());
    const int length =
        utf8.empty() ? 0 : MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, result.data(), room);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

} // namespace tool::system
