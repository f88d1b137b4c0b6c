#pragma once

#include <cstddef>
#include <iterator>

namespace foundation::network::text {

/// A forward iterator over the elements of a text, which decodes wherever it is read and keeps
/// nothing but its place.
///
/// @tparam Unit     of which the text is made
/// @tparam Reading  how it is read: `elementAt` gives the element that begins at a unit,
///                  `lengthAt` how many units it takes
template <class Unit, class Reading>
class ElementIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = char32_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const char32_t*;
    using reference = char32_t;

    constexpr ElementIterator() noexcept = default;
    explicit constexpr ElementIterator(const Unit* at) noexcept
        : at_(at)
    {
    }

    /// The unit that begins the element.
    constexpr const Unit* base() const noexcept { return at_; }

    constexpr char32_t operator*() const noexcept { return Reading::elementAt(at_); }

    constexpr ElementIterator& operator++() noexcept
    {
        at_ += Reading::lengthAt(at_);
        return *this;
    }

    constexpr ElementIterator operator++(int) noexcept
    {
        const ElementIterator before = *this;
        ++*this;
        return before;
    }

    friend constexpr bool operator==(ElementIterator, ElementIterator) noexcept = default;

private:
    const Unit* at_ = nullptr;
};

} // namespace foundation::network::text
