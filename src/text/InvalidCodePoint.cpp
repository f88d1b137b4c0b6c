#include "text/InvalidCodePoint.hpp"

#include "except/Throw.hpp"

#include <ios>
#include <locale>
#include <sstream>

namespace foundation::network::text {

std::string toHexadecimal(std::uint32_t value)
{
    std::ostringstream digits;
    digits.imbue(std::locale::classic());
    digits << std::showbase << std::hex << value;
    return digits.str();
}

void throwInvalidCodePoint(char32_t codePoint)
{
    core::except::throwOutOfRange("Invalid UTF-32 code point U+" + toHexadecimal(codePoint)
                                  + " encountered while trying to encode UTF-16 sequence");
}

} // namespace foundation::network::text
