#include "text/ColonHexadecimal.hpp"

#include "text/HexDigits.hpp"

namespace foundation::network::text {

std::string toColonHexadecimal(std::span<const unsigned char> bytes)
{
    std::string result;
    result.reserve(3 * bytes.size());
    for (const unsigned char byte : bytes) {
        if (!result.empty())
            result += ':';
        result += lowerHexDigit(byte >> 4U);
        result += lowerHexDigit(byte & 0xFU);
    }
    return result;
}

} // namespace foundation::network::text
