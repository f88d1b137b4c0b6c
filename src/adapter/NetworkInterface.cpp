#include <foundation/network/NetworkInterface.hpp>

#include "adapter/Listing.hpp"
#include "adapter/NetworkInterfaceImpl.hpp"
#include "text/Ascii.hpp"

#include <utility>

namespace foundation::network {

detail::ImmutableIterableRange<NetworkInterface> NetworkInterface::list()
{
    return getAdapters(FilterType::Active);
}

detail::ImmutableIterableRange<NetworkInterface> NetworkInterface::listAll()
{
    return getAdapters(FilterType::All);
}

detail::ImmutableIterableRange<NetworkInterface> NetworkInterface::getAdapters(FilterType filter)
{
    return filter == FilterType::All ? adapter::Listing::all(&platform::readAdapterTable)
                                     : adapter::Listing::active(&platform::readAdapterTable);
}

NetworkInterface::NetworkInterface(std::shared_ptr<const NetworkInterfaceImpl> impl) noexcept
    : impl_(std::move(impl))
{
}

NetworkInterface::NetworkInterface(const NetworkInterface& other) noexcept = default;
NetworkInterface::NetworkInterface(NetworkInterface&& other) noexcept = default;
NetworkInterface& NetworkInterface::operator=(const NetworkInterface& other) noexcept = default;
NetworkInterface& NetworkInterface::operator=(NetworkInterface&& other) noexcept = default;
NetworkInterface::~NetworkInterface() = default;

std::string NetworkInterface::getIdentifier() const
{
    return impl_->identifier();
}

std::u16string NetworkInterface::getFriendlyName() const
{
    return impl_->friendlyName().empty() ? text::fromAscii(impl_->identifier())
                                         : impl_->friendlyName();
}

std::u16string NetworkInterface::getDescription() const
{
    return impl_->description();
}

HardwareAddress NetworkInterface::getHardwareAddress() const
{
    return impl_->hardwareAddress();
}

detail::ImmutableIterableRange<InterfaceAddress> NetworkInterface::getInterfaceAddresses() const
{
    return detail::ImmutableIterableRange(impl_->interfaceAddresses());
}

detail::ImmutableIterableRange<InetAddress> NetworkInterface::getInetAddresses() const
{
    std::vector<InetAddress> addresses;
    addresses.reserve(impl_->interfaceAddresses().size());
    for (const InterfaceAddress& address : impl_->interfaceAddresses())
        addresses.push_back(address.getInetAddress());
    return detail::ImmutableIterableRange(std::move(addresses));
}

bool NetworkInterface::isUp() const noexcept
{
    return impl_->up();
}

bool NetworkInterface::isLoopback() const noexcept
{
    return impl_->loopback();
}

bool NetworkInterface::supportsMulticast() const noexcept
{
    return impl_->multicast();
}

} // namespace foundation::network
