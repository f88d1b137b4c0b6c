#pragma once

#include "adapter/Listing.hpp"
#include "platform/AdapterTable.hpp"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

/// Records of adapters that no machine has, and a way to read them.
namespace foundation::network::tests {

using Records = std::vector<platform::AdapterRecord>;
using Addresses = std::vector<platform::UnicastRecord>;

/// The record of an address text with a prefix length.
inline platform::UnicastRecord unicast(const std::string& text, unsigned prefixLength)
{
    const InetAddress address(text);
    platform::UnicastRecord record;
    record.family = address.getVersion() == 4 ? platform::Family::IPV4 : platform::Family::IPV6;
    std::ranges::copy(address.bytes(), record.bytes.begin());
    record.prefixLength = static_cast<std::uint8_t>(prefixLength);
    return record;
}

/// An adapter that is up, can multicast and is no loopback adapter.
inline platform::AdapterRecord adapter(std::uint32_t index, std::u16string name,
                                       Addresses addresses = {})
{
    platform::AdapterRecord record;
    record.index = index;
    record.friendlyName = std::move(name);
    record.unicastAddresses = std::move(addresses);
    record.up = true;
    record.multicast = true;
    return record;
}

inline platform::AdapterRecord loopback(std::uint32_t index, Addresses addresses)
{
    platform::AdapterRecord record = adapter(index, u"lo", std::move(addresses));
    record.loopback = true;
    record.multicast = false;
    return record;
}

/// Gives these records.
inline adapter::TableReader readerOf(Records records)
{
    return [records = std::move(records)](Records& table) {
        table = records;
        return std::error_code();
    };
}

} // namespace foundation::network::tests
