#pragma once

#include "text/LaxUtf8.hpp"

#include <cstdint>
#include <string_view>

/// 64-bit FNV-1a over code points: four bytes for each, low byte first on every machine.
namespace foundation::network::text {

inline constexpr std::uint64_t FNV_OFFSET_BASIS = 0xcbf29ce484222325U;
inline constexpr std::uint64_t FNV_PRIME = 0x100000001b3U;

/// A hash that elements are added to one after the other.
///
/// A zero byte only multiplies, so the multiplications of a run of zero bytes are one.
class Fnv1a {
public:
    /// An element below 0x100.
    void addByte(std::uint32_t element) noexcept { hash_ = (hash_ ^ element) * PRIME_4; }

    /// An element below 0x10000.
    void addTwoBytes(std::uint32_t element) noexcept
    {
        hash_ = (hash_ ^ (element & 0xFF)) * FNV_PRIME;
        hash_ = (hash_ ^ (element >> 8)) * PRIME_3;
    }

    /// Any element.
    void add(std::uint32_t element) noexcept
    {
        if (element < 0x100)
            return addByte(element);
        if (element < 0x10000)
            return addTwoBytes(element);
        for (int i = 0; i < 4; ++i, element >>= 8)
            hash_ = (hash_ ^ (element & 0xFF)) * FNV_PRIME;
    }

    std::uint64_t value() const noexcept { return hash_; }

private:
    static constexpr std::uint64_t PRIME_2 = FNV_PRIME * FNV_PRIME;
    static constexpr std::uint64_t PRIME_3 = PRIME_2 * FNV_PRIME;
    static constexpr std::uint64_t PRIME_4 = PRIME_2 * PRIME_2;

    std::uint64_t hash_ = FNV_OFFSET_BASIS;
};

/// @{
/// The hash of a text, in UTF-32 or in lax UTF-8; the same for both. That of the empty text is
/// `FNV_OFFSET_BASIS`.
inline std::uint64_t fnv1a(std::u32string_view text) noexcept
{
    Fnv1a hash;
    for (const char32_t element : text)
        hash.add(element);
    return hash.value();
}

inline std::uint64_t fnv1a(std::string_view lax) noexcept
{
    Fnv1a hash;
    const LaxUtf8View elements(lax);
    for (LaxUtf8Iterator at = elements.begin(); at != elements.end(); ++at) {
        // The lead is asked once for everything, since texts change between scripts all the time.
        const unsigned char lead = byteAt(at.base());
        if (lead < 0x80)
            hash.addByte(lead);
        else if (lead < 0xF0)
            hash.addTwoBytes(*at);
        else
            hash.add(*at);
    }
    return hash.value();
}
/// @}

} // namespace foundation::network::text
