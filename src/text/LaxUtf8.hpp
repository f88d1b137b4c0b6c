#pragma once

#include "text/Utf8Decoding.hpp"

#include <bit>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

/// How values hold their texts: UTF-8 wherever a text is Unicode, and for anything else what its rule
/// gives when it is not ended at U+10FFFF. Sequences have one to seven bytes, so that each element of
/// 32 bits has one. A surrogate takes three bytes.
///
/// Nothing is checked, since what was written here is all that is read. Two texts are the same if
/// their bytes are, and their order is that of their bytes.
namespace foundation::network::text {

/// The elements of a text in lax UTF-8, where they lie.
class LaxUtf8Iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = char32_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const char32_t*;
    using reference = char32_t;

    constexpr LaxUtf8Iterator() noexcept = default;
    explicit constexpr LaxUtf8Iterator(const char* at) noexcept
        : at_(at)
    {
    }

    constexpr char32_t operator*() const noexcept
    {
        const unsigned char lead = byteAt(at_);
        if (lead < 0x80)
            return lead;
        const std::size_t length = lengthOf(lead);
        char32_t element = length < 7 ? lead & (0x7FU >> length) : 0U;
        for (std::size_t i = 1; i < length; ++i)
            element = (element << 6) | (byteAt(at_ + i) & 0x3FU);
        return element;
    }

    constexpr LaxUtf8Iterator& operator++() noexcept
    {
        const unsigned char lead = byteAt(at_);
        at_ += lead < 0x80 ? 1 : lengthOf(lead);
        return *this;
    }

    constexpr LaxUtf8Iterator operator++(int) noexcept
    {
        const LaxUtf8Iterator before = *this;
        ++*this;
        return before;
    }

    friend constexpr bool operator==(LaxUtf8Iterator, LaxUtf8Iterator) noexcept = default;

private:
    static constexpr std::size_t lengthOf(unsigned char lead) noexcept
    {
        return static_cast<std::size_t>(std::countl_one(lead));
    }

    const char* at_ = nullptr;
};

/// A text in lax UTF-8 as a range of its elements.
class LaxUtf8View {
public:
    explicit constexpr LaxUtf8View(std::string_view lax) noexcept
        : lax_(lax)
    {
    }

    constexpr LaxUtf8Iterator begin() const noexcept { return LaxUtf8Iterator(lax_.data()); }
    constexpr LaxUtf8Iterator end() const noexcept
    {
        return LaxUtf8Iterator(lax_.data() + lax_.size());
    }

private:
    std::string_view lax_;
};

/// A text in lax UTF-8, with one allocation.
std::string toLaxUtf8(std::u32string_view elements);

/// The elements of a text in lax UTF-8, with one allocation.
std::u32string fromLaxUtf8(std::string_view lax);

/// Whether some element lies above U+10FFFF, so that the text is no UTF-8.
bool exceedsUnicode(std::string_view lax) noexcept;

/// A text in lax UTF-8 as UTF-8.
/// @throws what `toUtf8` throws, if some element lies above U+10FFFF
std::string laxToUtf8(std::string_view lax);

/// A text in lax UTF-8 as UTF-16.
/// @throws what `toUtf16` throws for a surrogate and for what lies above U+10FFFF
std::u16string laxToUtf16(std::string_view lax);

} // namespace foundation::network::text
