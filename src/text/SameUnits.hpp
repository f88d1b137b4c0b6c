#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

/// Texts whose units are the same numbers in two encodings: loops of which compilers make vector
/// code.
namespace foundation::network::text {

namespace detail {

    // So many units are worked on at a time. What is left at the end is worked on together with
    // some that were done before, since a loop over single units would take longer than all else.
    inline constexpr std::size_t BLOCK = 16;

    /// Calls @p work with the beginnings of blocks that cover a longer text.
    template <class Work>
    void forEachBlock(std::size_t size, Work work)
    {
        for (std::size_t begin = 0; begin < size - BLOCK; begin += BLOCK)
            work(begin);
        work(size - BLOCK);
    }

} // namespace detail

/// Whether all units lie below a power of two.
template <class Unit>
bool isAllBelow(char32_t powerOfTwo, std::basic_string_view<Unit> text) noexcept
{
    using Bits = std::make_unsigned_t<Unit>;
    // The units of a word stay where they are until the end, so that none has to be moved for it.
    using Word = std::uint64_t;
    constexpr std::size_t UNITS = sizeof(Word) / sizeof(Unit);
    constexpr Word ONES = ~Word{0} / static_cast<Bits>(-1); // 1 in each unit of a word
    const auto wordAt = [&text](std::size_t index) {
        Word word = 0;
        std::memcpy(&word, text.data() + index, sizeof word);
        return word;
    };
    Word bits = 0;
    if (text.size() < UNITS) {
        for (const Unit unit : text)
            bits |= static_cast<Bits>(unit);
    } else {
        for (std::size_t index = 0; index < text.size() - UNITS; index += UNITS)
            bits |= wordAt(index);
        bits |= wordAt(text.size() - UNITS); // some of it for the second time
    }
    return (bits & (ONES * static_cast<Bits>(-powerOfTwo))) == 0;
}

/// The units of a text, each as one of another size that can hold it.
template <class To, class Unit>
To copyUnits(std::basic_string_view<Unit> text)
{
    using ToUnit = typename To::value_type;
    To result(text.size(), ToUnit());
    ToUnit* const out = result.data();
    const Unit* const in = text.data();
    const auto toUnit = [](Unit unit) {
        return static_cast<ToUnit>(static_cast<std::make_unsigned_t<Unit>>(unit));
    };
    if (text.size() < detail::BLOCK) {
        for (std::size_t i = 0; i < text.size(); ++i)
            out[i] = toUnit(in[i]);
    } else {
        detail::forEachBlock(text.size(), [in, out, toUnit](std::size_t begin) {
            for (std::size_t i = 0; i < detail::BLOCK; ++i)
                out[begin + i] = toUnit(in[begin + i]);
        });
    }
    return result;
}

} // namespace foundation::network::text
