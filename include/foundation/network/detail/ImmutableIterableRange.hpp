#pragma once

#include <foundation/network/API.hpp>

#include <cstddef>
#include <utility>
#include <vector>

namespace foundation::network::detail {

/// The sequence in which the library answers lists: a range for `for`, and for algorithms.
///
/// It owns its elements and gives them out for reading only; nothing but the assignment of a whole
/// range changes it. Any number of threads may read one range at the same time.
template <class T>
class ImmutableIterableRange {
public:
    using value_type = T;                                           ///< for algorithms
    using size_type = std::size_t;                                  ///< for algorithms
    using const_iterator = typename std::vector<T>::const_iterator; ///< for algorithms
    using iterator = const_iterator; ///< nothing is written through it

    /// An empty range.
    ImmutableIterableRange() noexcept = default;

    /// The range of these elements.
    explicit ImmutableIterableRange(std::vector<T> elements) noexcept
        : elements_(std::move(elements))
    {
    }

    /// A copy of every element.
    ImmutableIterableRange(const ImmutableIterableRange&) = default;

    /// Takes the elements over and leaves an empty range behind.
    ImmutableIterableRange(ImmutableIterableRange&& other) noexcept
        : elements_(std::exchange(other.elements_, {}))
    {
    }

    /// A copy of every element in place of those that were here; if memory runs out, they stay.
    ImmutableIterableRange& operator=(const ImmutableIterableRange& other)
    {
        if (this != &other)
            elements_ = std::vector<T>(other.elements_);
        return *this;
    }

    /// Takes the elements over and leaves an empty range behind.
    ImmutableIterableRange& operator=(ImmutableIterableRange&& other) noexcept
    {
        elements_ = std::exchange(other.elements_, {});
        return *this;
    }

    /// Frees the elements.
    ~ImmutableIterableRange() = default;

    /// The first element.
    const_iterator begin() const noexcept { return elements_.begin(); }

    /// Behind the last element.
    const_iterator end() const noexcept { return elements_.end(); }

    /// How many elements there are.
    std::size_t size() const noexcept { return elements_.size(); }

    /// Whether there is none.
    bool empty() const noexcept { return elements_.empty(); }

private:
    std::vector<T> elements_;
};

extern template class ZKFLNETWORK_API_EXTERN ImmutableIterableRange<unsigned char>;

} // namespace foundation::network::detail
