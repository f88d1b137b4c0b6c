#pragma once

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <string>
#include <vector>

namespace foundation::network {

/// The facts of one adapter, which the copies of a `NetworkInterface` share. Once it is shared it does
/// not change.
class NetworkInterfaceImpl {
public:
    NetworkInterfaceImpl(std::string identifier, std::u16string friendlyName,
                         std::u16string description, bool up, bool loopback,
                         bool multicast) noexcept;

    /// Does nothing for a loopback adapter, which has no such address, whatever the system reports.
    void setHardwareAddress(std::vector<unsigned char> bytes) noexcept;

    /// Puts an address behind the others.
    void addInterfaceAddress(InterfaceAddress address);

    const std::string& identifier() const noexcept { return identifier_; }
    const std::u16string& friendlyName() const noexcept { return friendlyName_; }
    const std::u16string& description() const noexcept { return description_; }
    const HardwareAddress& hardwareAddress() const noexcept { return hardwareAddress_; }
    const std::vector<InterfaceAddress>& interfaceAddresses() const noexcept
    {
        return interfaceAddresses_;
    }
    bool up() const noexcept { return up_; }
    bool loopback() const noexcept { return loopback_; }
    bool multicast() const noexcept { return multicast_; }

private:
    std::string identifier_;
    std::u16string friendlyName_;
    std::u16string description_;
    HardwareAddress hardwareAddress_;
    std::vector<InterfaceAddress> interfaceAddresses_;
    bool up_;
    bool loopback_;
    bool multicast_;
};

} // namespace foundation::network
