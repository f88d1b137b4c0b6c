#include <foundation/network/HardwareAddress.hpp>

#include "text/ColonHexadecimal.hpp"

#include <utility>

namespace foundation::network {

HardwareAddress::HardwareAddress() noexcept = default;

HardwareAddress::HardwareAddress(std::vector<unsigned char> bytes) noexcept
    : ImmutableIterableRange(std::move(bytes))
{
}

HardwareAddress::HardwareAddress(const HardwareAddress& other) = default;
HardwareAddress::HardwareAddress(HardwareAddress&& other) noexcept = default;
HardwareAddress& HardwareAddress::operator=(const HardwareAddress& other) = default;
HardwareAddress& HardwareAddress::operator=(HardwareAddress&& other) noexcept = default;
HardwareAddress::~HardwareAddress() = default;

std::string HardwareAddress::toString() const
{
    return text::toColonHexadecimal({begin(), end()});
}

std::vector<unsigned char> HardwareAddress::bytes() const
{
    return {begin(), end()};
}

} // namespace foundation::network
