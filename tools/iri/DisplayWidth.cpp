#include "DisplayWidth.hpp"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace tool::text {
namespace {

    std::size_t widthOf(UChar32 character) noexcept
    {
        constexpr std::uint32_t DRAWN_OVER = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK;
        if (character >= 0x80 && (U_GET_GC_MASK(character) & DRAWN_OVER) != 0)
            return 0;
        const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
        return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
    }

} // namespace

std::size_t displayWidth(std::string_view text) noexcept
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size();) {
        UChar32 character = 0;
        U8_NEXT_UNSAFE(bytes, i, character); // the text is valid
        width += widthOf(character);
    }
    return width;
}

} // namespace tool::text
