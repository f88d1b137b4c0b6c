#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <string>
#include <vector>

namespace foundation::network {

/// The link-layer address of an adapter: a range of bytes in the order in which they are sent. It may
/// have any length; an empty one stands for an adapter that has none.
///
/// Any number of threads may call const members of one object. A moved-from address is empty. Where
/// memory runs out `std::bad_alloc` is thrown and nothing has changed.
class ZKFLNETWORK_API HardwareAddress : public detail::ImmutableIterableRange<unsigned char> {
public:
    /// An empty address.
    HardwareAddress() noexcept;

    /// The address of these bytes.
    explicit HardwareAddress(std::vector<unsigned char> bytes) noexcept;

    /// A copy of the bytes.
    HardwareAddress(const HardwareAddress& other);
    /// Takes the bytes over.
    HardwareAddress(HardwareAddress&& other) noexcept;
    /// A copy of the bytes.
    HardwareAddress& operator=(const HardwareAddress& other);
    /// Takes the bytes over.
    HardwareAddress& operator=(HardwareAddress&& other) noexcept;
    /// Frees the bytes.
    ~HardwareAddress();

    /// Two lower-case hexadecimal digits a byte with ":" between them, such as 00:1a:2b:3c:4d:5e; the
    /// empty text for an empty address.
    std::string toString() const;

    /// A copy of the bytes.
    std::vector<unsigned char> bytes() const;
};

} // namespace foundation::network
