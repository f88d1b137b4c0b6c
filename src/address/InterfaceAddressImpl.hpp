#pragma once

#include <boost/asio/ip/address.hpp>

#include <string>

namespace foundation::network {

/// What the copies of an `InterfaceAddress` share. It does not change once it is made.
class InterfaceAddressImpl {
public:
    /// @throws boost::wrapexcept<std::out_of_range> "prefix length too large"
    InterfaceAddressImpl(const boost::asio::ip::address& ipAddress, unsigned short length);

    /// Counts the bits of a network mask. An IPv6 mask may have gaps; a byte in it that is no run of
    /// leading bits counts nothing.
    ///
    /// @throws boost::wrapexcept<std::out_of_range> "non-contiguous netmask", if a byte of an IPv4
    ///         mask is no run of leading bits
    /// @throws boost::wrapexcept<std::invalid_argument> "non-contiguous netmask", if bits of an IPv4
    ///         mask are set in a byte behind the end of the run
    /// @throws boost::wrapexcept<boost::asio::ip::bad_address_cast> if the mask is of another version
    InterfaceAddressImpl(const boost::asio::ip::address& ipAddress,
                         const boost::asio::ip::address& netmask);

    const boost::asio::ip::address address;
    const unsigned short prefixLength;
    const std::string text; // such as 192.168.1.5/24
};

} // namespace foundation::network
