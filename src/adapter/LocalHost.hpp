#pragma once

#include <foundation/network/NetworkInterface.hpp>

#include <optional>

namespace foundation::network::adapter {

/// The address under which others may reach a machine with these adapters: the first of an adapter
/// that is no loopback adapter. One that is not link-local goes before one that is.
std::optional<InetAddress> findReachableAddress(
    const detail::ImmutableIterableRange<NetworkInterface>& adapters);

} // namespace foundation::network::adapter
