#include "adapter/NetworkInterfaceImpl.hpp"

#include <utility>

namespace foundation::network {

NetworkInterfaceImpl::NetworkInterfaceImpl(std::string identifier, std::u16string friendlyName,
                                           std::u16string description, bool up, bool loopback,
                                           bool multicast) noexcept
    : identifier_(std::move(identifier))
    , friendlyName_(std::move(friendlyName))
    , description_(std::move(description))
    , up_(up)
    , loopback_(loopback)
    , multicast_(multicast)
{
}

void NetworkInterfaceImpl::setHardwareAddress(std::vector<unsigned char> bytes) noexcept
{
    if (!loopback_)
        hardwareAddress_ = HardwareAddress(std::move(bytes));
}

void NetworkInterfaceImpl::addInterfaceAddress(InterfaceAddress address)
{
    interfaceAddresses_.push_back(std::move(address));
}

} // namespace foundation::network
