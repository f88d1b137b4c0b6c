#pragma once

#include <boost/asio/ip/address.hpp>

#include <utility>

namespace foundation::network {

/// What the copies of an `InetAddress` share. It does not change once it is made.
class InetAddressImpl {
public:
    explicit InetAddressImpl(boost::asio::ip::address ipAddress) noexcept
        : address(std::move(ipAddress))
    {
    }

    const boost::asio::ip::address address;
};

} // namespace foundation::network
