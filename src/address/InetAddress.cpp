#include <foundation/network/InetAddress.hpp>

#include "address/InetAddressImpl.hpp"
#include "except/Throw.hpp"
#include "platform/StrictIPv4.hpp"

#include <boost/asio/ip/address.hpp>
#include <boost/system/error_code.hpp>
#include <boost/system/system_error.hpp>

#include <algorithm>
#include <utility>

namespace foundation::network {

namespace ip = boost::asio::ip;

namespace {

    std::shared_ptr<const InetAddressImpl> share(const ip::address& address)
    {
        return std::make_shared<const InetAddressImpl>(address);
    }

    template <class Address>
    ip::address fromBytes(const std::vector<unsigned char>& bytes)
    {
        typename Address::bytes_type array{};
        std::ranges::copy(bytes, array.begin());
        return Address(array);
    }

    ip::address fromBytes(const std::vector<unsigned char>& bytes)
    {
        switch (bytes.size()) {
        case 0:
            return ip::address_v4();
        case 4:
            return fromBytes<ip::address_v4>(bytes);
        case 16:
            return fromBytes<ip::address_v6>(bytes);
        default:
            core::except::throwInvalidArgument(
                "Can not create InetAddress from " + std::to_string(bytes.size())
                + " elements. Vector must have 0, 4 or 16 elements.");
        }
    }

    ip::address makeAddress(const std::string& text)
    {
        // The parser tries IPv6 first, which every text would pay for that can be none.
        if (text.find(':') == text.npos) {
            boost::system::error_code failure;
            const ip::address_v4 address = ip::make_address_v4(text.c_str(), failure);
            if (!failure)
                return address;
        }
        try {
            return ip::make_address(text.c_str());
        } catch (const boost::system::system_error& failure) {
            core::except::throwInvalidArgument(failure.what());
        }
    }

    ip::address parse(const std::string& text)
    {
        ip::address address = makeAddress(text);
        // On some systems the parser takes IPv4 texts of fewer than four parts.
        if (address.is_v4() && !platform::isStrictIPv4(text.c_str()))
            core::except::throwInvalidArgument("Invalid IP address string: " + text);
        return address;
    }

} // namespace

InetAddress::InetAddress()
    : InetAddress(share(ip::address_v4()), {})
{
}

InetAddress::InetAddress(std::array<unsigned char, 4> bytes)
    : InetAddress(share(ip::address_v4(bytes)), {})
{
}

InetAddress::InetAddress(std::array<unsigned char, 16> bytes)
    : InetAddress(share(ip::address_v6(bytes)), {})
{
}

InetAddress::InetAddress(const std::vector<unsigned char>& bytes)
    : InetAddress(share(fromBytes(bytes)), {})
{
}

InetAddress::InetAddress(const std::string& text)
    : InetAddress(share(parse(text)), {})
{
}

InetAddress::InetAddress(std::shared_ptr<const InetAddressImpl> impl, std::string hostName) noexcept
    : impl_(std::move(impl))
    , hostName_(std::move(hostName))
{
}

InetAddress::InetAddress(const InetAddress& other) = default;
InetAddress::InetAddress(InetAddress&& other) noexcept = default;

// A copy first, so that no address gets the name of another where memory runs out.
InetAddress& InetAddress::operator=(const InetAddress& other)
{
    return *this = InetAddress(other);
}

InetAddress& InetAddress::operator=(InetAddress&& other) noexcept = default;
InetAddress::~InetAddress() = default;

unsigned int InetAddress::getVersion() const noexcept
{
    return impl_->address.is_v4() ? 4 : 6;
}

bool InetAddress::isLoopback() const noexcept
{
    return impl_->address.is_loopback();
}

bool InetAddress::isLinkLocal() const noexcept
{
    const ip::address& address = impl_->address;
    if (address.is_v6())
        return address.to_v6().is_link_local();
    return (address.to_v4().to_uint() & 0xFFFF0000U) == 0xA9FE0000U;
}

bool InetAddress::isMulticast() const noexcept
{
    return impl_->address.is_multicast();
}

std::string InetAddress::toString() const
{
    return impl_->address.to_string();
}

std::string InetAddress::getHostAddress() const
{
    return toString();
}

std::vector<unsigned char> InetAddress::bytes() const
{
    const auto toVector = [](const auto& array) {
        return std::vector<unsigned char>(array.begin(), array.end());
    };
    const ip::address& address = impl_->address;
    return address.is_v4() ? toVector(address.to_v4().to_bytes())
                           : toVector(address.to_v6().to_bytes());
}

} // namespace foundation::network
