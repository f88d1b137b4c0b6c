#include "address/InterfaceAddressImpl.hpp"

#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

#include <bit>

namespace foundation::network {

namespace ip = boost::asio::ip;

namespace {

    std::string networkText(const ip::address& address, unsigned short prefixLength)
    {
        return address.is_v4() ? ip::network_v4(address.to_v4(), prefixLength).to_string()
                               : ip::network_v6(address.to_v6(), prefixLength).to_string();
    }

    unsigned short leadingOnes(const ip::address_v6& mask)
    {
        int sum = 0;
        for (const unsigned char byte : mask.to_bytes()) {
            const int ones = std::countl_one(byte);
            const bool isRun = std::popcount(byte) == ones;
            sum += isRun ? ones : 0;
        }
        return static_cast<unsigned short>(sum);
    }

    unsigned short prefixLengthOf(const ip::address& address, const ip::address& mask)
    {
        return address.is_v4() ? ip::network_v4(address.to_v4(), mask.to_v4()).prefix_length()
                               : leadingOnes(mask.to_v6());
    }

} // namespace

InterfaceAddressImpl::InterfaceAddressImpl(const ip::address& ipAddress, unsigned short length)
    : address(ipAddress)
    , prefixLength(length)
    , text(networkText(ipAddress, length))
{
}

InterfaceAddressImpl::InterfaceAddressImpl(const ip::address& ipAddress, const ip::address& netmask)
    : InterfaceAddressImpl(ipAddress, prefixLengthOf(ipAddress, netmask))
{
}

} // namespace foundation::network
