#pragma once

#include <cstdint>

namespace foundation::network::iri::detail {

/// The components of an IRI that exist in several forms.
enum class Component : std::uint8_t { UserInfo, Host, Path, Query, Fragment };

/// A set of components.
class ComponentSet {
public:
    /// Puts a component in.
    constexpr void insert(Component component) noexcept { bits_ |= bit(component); }

    /// Puts a component in if it is in another set.
    constexpr void insertFrom(ComponentSet other, Component component) noexcept
    {
        bits_ |= other.bits_ & bit(component);
    }

    /// Whether a component is in.
    constexpr bool contains(Component component) const noexcept
    {
        return (bits_ & bit(component)) != 0;
    }

private:
    static constexpr unsigned bit(Component component) noexcept
    {
        return 1U << static_cast<unsigned>(component);
    }

    unsigned bits_ = 0;
};

} // namespace foundation::network::iri::detail
