#include "text/Ascii.hpp"

#include <algorithm>

namespace foundation::network::text {

std::string toAscii(std::u16string_view text)
{
    std::string result(text.size(), '\0');
    std::transform(text.begin(), text.end(), result.begin(),
                   [](char16_t unit) { return unit < 0x80 ? static_cast<char>(unit) : '?'; });
    return result;
}

std::u16string fromAscii(std::string_view text)
{
    std::u16string result(text.size(), u'\0');
    std::transform(text.begin(), text.end(), result.begin(), [](char narrow) {
        const auto byte = static_cast<unsigned char>(narrow);
        return byte < 0x80 ? static_cast<char16_t>(byte) : u'\uFFFD';
    });
    return result;
}

} // namespace foundation::network::text
