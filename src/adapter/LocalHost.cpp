#include "adapter/LocalHost.hpp"

#include <string>
#include <utility>

namespace foundation::network {

namespace adapter {

    std::optional<InetAddress> findReachableAddress(
        const detail::ImmutableIterableRange<NetworkInterface>& adapters)
    {
        std::optional<InetAddress> linkLocal;
        for (const NetworkInterface& adapter : adapters) {
            if (adapter.isLoopback())
                continue;
            for (const InetAddress& address : adapter.getInetAddresses()) {
                if (!address.isLinkLocal())
                    return address;
                if (!linkLocal)
                    linkLocal = address;
            }
        }
        return linkLocal;
    }

} // namespace adapter

// A member of the address class that stands here, because it needs the adapters, and they stand above
// the addresses.
InetAddress InetAddress::getLocalHost()
{
    std::string name = getLocalHostName();
    InetAddress candidate = getByName(name);
    if (!candidate.isLoopback() && !candidate.isLinkLocal())
        return candidate;
    const std::optional<InetAddress> found =
        adapter::findReachableAddress(NetworkInterface::list());
    return found ? InetAddress(found->impl_, std::move(name)) : candidate;
}

} // namespace foundation::network
