#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

/// Texts whose units are the same numbers in two encodings: plain loops, of which compilers make
/// vector code.
namespace foundation::network::text {

/// Whether all units lie below a power of two.
template <class Unit>
bool isAllBelow(char32_t powerOfTwo, std::basic_string_view<Unit> text) noexcept
{
    std::make_unsigned_t<Unit> bits = 0;
    for (const Unit unit : text)
        bits |= static_cast<std::make_unsigned_t<Unit>>(unit);
    return bits < powerOfTwo;
}

/// The units of a text, each as one of another size that can hold it.
template <class To, class Unit>
To copyUnits(std::basic_string_view<Unit> text)
{
    using ToUnit = typename To::value_type;
    To result(text.size(), ToUnit());
    ToUnit* const out = result.data();
    const Unit* const in = text.data();
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<ToUnit>(in[i]);
    return result;
}

} // namespace foundation::network::text
