#pragma once

#include "text/ElementIterator.hpp"
#include "text/Utf8Decoding.hpp"

#include <bit>
#include <cstddef>
#include <string>
#include <string_view>

/// How values hold their texts: UTF-8 wherever a text is Unicode, and for anything else what its
/// rule gives when it is not ended at U+10FFFF. Sequences have one to seven bytes, so that each
/// element of 32 bits has one. A surrogate takes three bytes.
///
/// Nothing is checked, since what was written here is all that is read. Two texts are the same if
/// their bytes are, and their order is that of their bytes.
namespace foundation::network::text {

/// How lax UTF-8 is read.
struct LaxReading {
    static constexpr char32_t elementAt(const char* at) noexcept
    {
        const unsigned char lead = byteAt(at);
        if (lead < 0x80)
            return lead;
        if (lead < 0xE0)
            return ((lead & 0x1FU) << 6) | payloadAt(at + 1);
        if (lead < 0xF0)
            return ((lead & 0x0FU) << 12) | (payloadAt(at + 1) << 6) | payloadAt(at + 2);
        const std::size_t length = lengthAt(at);
        char32_t element = length < 7 ? lead & (0x7FU >> length) : 0U;
        for (std::size_t i = 1; i < length; ++i)
            element = (element << 6) | payloadAt(at + i);
        return element;
    }

    static constexpr std::size_t lengthAt(const char* at) noexcept
    {
        const unsigned char lead = byteAt(at);
        // Branches, since the next element would wait for what is computed.
        if (lead < 0x80)
            return 1;
        if (lead < 0xE0)
            return 2;
        return static_cast<std::size_t>(std::countl_one(lead));
    }

private:
    static constexpr char32_t payloadAt(const char* at) noexcept { return byteAt(at) & 0x3FU; }
};

/// Over the elements of a text in lax UTF-8.
using LaxUtf8Iterator = ElementIterator<char, LaxReading>;

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
