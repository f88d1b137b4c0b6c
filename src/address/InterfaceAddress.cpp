#include <foundation/network/InterfaceAddress.hpp>

#include "address/InetAddressImpl.hpp"
#include "address/InterfaceAddressImpl.hpp"

#include <utility>

namespace foundation::network {

InterfaceAddress::InterfaceAddress()
    : InterfaceAddress(InetAddress(), 0)
{
}

InterfaceAddress::InterfaceAddress(const InetAddress& address, unsigned short prefixLength)
    : InterfaceAddress(
        std::make_shared<const InterfaceAddressImpl>(address.impl_->address, prefixLength))
{
}

InterfaceAddress::InterfaceAddress(std::shared_ptr<const InterfaceAddressImpl> impl) noexcept
    : impl_(std::move(impl))
{
}

InterfaceAddress::InterfaceAddress(const InterfaceAddress& other) noexcept = default;
InterfaceAddress::InterfaceAddress(InterfaceAddress&& other) noexcept = default;
InterfaceAddress& InterfaceAddress::operator=(const InterfaceAddress& other) noexcept = default;
InterfaceAddress& InterfaceAddress::operator=(InterfaceAddress&& other) noexcept = default;
InterfaceAddress::~InterfaceAddress() = default;

InetAddress InterfaceAddress::getInetAddress() const
{
    return {std::make_shared<const InetAddressImpl>(impl_->address), std::string()};
}

unsigned short InterfaceAddress::prefixLength() const noexcept
{
    return impl_->prefixLength;
}

std::string InterfaceAddress::toString() const
{
    return impl_->text;
}

} // namespace foundation::network
