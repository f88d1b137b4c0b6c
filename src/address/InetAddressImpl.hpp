#pragma once

#include <boost/asio/ip/address.hpp>

namespace foundation::network {

/// What the copies of an `InetAddress` share. It does not change once it is made.
class InetAddressImpl {
public:
    explicit InetAddressImpl(const boost::asio::ip::address& ipAddress) noexcept
        : address(ipAddress)
    {
    }

    const boost::asio::ip::address address;
};

} // namespace foundation::network
