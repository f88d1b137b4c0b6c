#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/InetAddress.hpp>

#include <memory>
#include <string>

namespace foundation::network {

class InterfaceAddressImpl;

/// An IP address with the length of its network prefix, as an adapter carries it.
///
/// It never changes, and copies share it: a copy costs a reference count. Any number of threads may
/// call const members of one object and of its copies. A moved-from object may only be destroyed or
/// assigned to. Where memory runs out `std::bad_alloc` is thrown and nothing has changed.
class ZKFLNETWORK_API InterfaceAddress {
public:
    /// 0.0.0.0/0.
    InterfaceAddress();

    /// An address and the number of bits that name its network. The address stays whole, and a name
    /// that it remembers is dropped.
    ///
    /// @throws std::out_of_range (as `boost::wrapexcept`) "prefix length too large", above 32 for
    ///         version 4 and above 128 for version 6
    InterfaceAddress(const InetAddress& address, unsigned short prefixLength);

    /// Shares the address.
    InterfaceAddress(const InterfaceAddress& other) noexcept;
    /// Takes the address over.
    InterfaceAddress(InterfaceAddress&& other) noexcept;
    /// Shares the address.
    InterfaceAddress& operator=(const InterfaceAddress& other) noexcept;
    /// Takes the address over.
    InterfaceAddress& operator=(InterfaceAddress&& other) noexcept;
    /// The last of the copies frees the address.
    ~InterfaceAddress();

    /// The address, which remembers no name.
    InetAddress getInetAddress() const;

    /// How many leading bits name the network.
    unsigned short prefixLength() const noexcept;

    /// The text of the whole address, "/" and the prefix length, such as 192.168.1.5/24 (RFC 4632,
    /// 3.1; RFC 4291, 2.3). It was made when the value was.
    std::string toString() const;

private:
    explicit InterfaceAddress(std::shared_ptr<const InterfaceAddressImpl> impl) noexcept;

    std::shared_ptr<const InterfaceAddressImpl> impl_;
};

} // namespace foundation::network
