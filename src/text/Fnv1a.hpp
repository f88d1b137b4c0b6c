#pragma once

#include "text/LaxUtf8.hpp"

#include <cstdint>
#include <string_view>

/// 64-bit FNV-1a over code points: four bytes for each, low byte first on every machine.
namespace foundation::network::text {

inline constexpr std::uint64_t FNV_OFFSET_BASIS = 0xcbf29ce484222325U;
inline constexpr std::uint64_t FNV_PRIME = 0x100000001b3U;

/// The hash of the elements of a range; that of the empty text is `FNV_OFFSET_BASIS`.
template <class Elements>
std::uint64_t fnv1aOf(const Elements& elements) noexcept
{
    // A zero byte only multiplies, so the multiplications of a run of zero bytes are one.
    constexpr std::uint64_t PRIME_2 = FNV_PRIME * FNV_PRIME;
    constexpr std::uint64_t PRIME_3 = PRIME_2 * FNV_PRIME;
    constexpr std::uint64_t PRIME_4 = PRIME_2 * PRIME_2;

    std::uint64_t hash = FNV_OFFSET_BASIS;
    for (const char32_t unit : elements) {
        if (unit < 0x100) {
            hash = (hash ^ unit) * PRIME_4;
            continue;
        }
        hash = (hash ^ (unit & 0xFF)) * FNV_PRIME;
        if (unit < 0x10000) {
            hash = (hash ^ (unit >> 8)) * PRIME_3;
            continue;
        }
        hash = (hash ^ ((unit >> 8) & 0xFF)) * FNV_PRIME;
        hash = (hash ^ ((unit >> 16) & 0xFF)) * FNV_PRIME;
        hash = (hash ^ (unit >> 24)) * FNV_PRIME;
    }
    return hash;
}

/// @{
/// The hash of a text, in UTF-32 or in lax UTF-8; the same for both.
inline std::uint64_t fnv1a(std::u32string_view text) noexcept
{
    return fnv1aOf(text);
}

inline std::uint64_t fnv1a(std::string_view lax) noexcept
{
    return fnv1aOf(LaxUtf8View(lax));
}
/// @}

} // namespace foundation::network::text
