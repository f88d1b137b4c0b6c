#include <foundation/network/InetAddress.hpp>

#include "address/InetAddressImpl.hpp"
#include "address/Resolver.hpp"

namespace foundation::network {

namespace {

    using Flags = address::Tcp::resolver;

    std::shared_ptr<const InetAddressImpl> implOf(
        const address::Tcp::resolver::results_type::value_type& entry)
    {
        return std::make_shared<const InetAddressImpl>(entry.endpoint().address());
    }

} // namespace

InetAddress InetAddress::getByName(const std::string& name)
{
    const auto results = address::lookUp(name, Flags::address_configured);
    return {implOf(*results.begin()), name};
}

detail::ImmutableIterableRange<InetAddress> InetAddress::getAllByName(const std::string& name)
{
    std::vector<InetAddress> addresses;
    for (const auto& entry : address::lookUp(name, Flags::address_configured))
        addresses.push_back(InetAddress(implOf(entry), name));
    return detail::ImmutableIterableRange(std::move(addresses));
}

std::string InetAddress::getHostName() const
{
    return hostName_.empty() ? address::lookUp(impl_->address) : hostName_;
}

std::string InetAddress::getCanonicalHostName() const
{
    // From the address, even where a name is at hand: that one may be any of the host's names.
    const std::string name = address::lookUp(impl_->address);
    return address::lookUp(name, Flags::canonical_name).begin()->host_name();
}

} // namespace foundation::network
