#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

/// The services of the operating system that the library uses: plain records and functions, which
/// each platform implements in a folder of its own.
namespace foundation::network::platform {

/// The families of addresses that the library tells apart.
enum class Family { IPV4, IPV6, OTHER };

/// An address of an adapter.
struct UnicastRecord {
    Family family = Family::OTHER;
    std::array<unsigned char, 16> bytes{}; // in network order; the first four with IPv4
    std::uint8_t prefixLength = 0;
};

/// What the system knows of one adapter.
struct AdapterRecord {
    std::uint32_t index = 0;     // 0 where only IPv6 has one
    std::uint32_t ipv6Index = 0; // used where the other is 0
    std::u16string friendlyName;
    std::u16string description;
    std::vector<unsigned char> physicalAddress;
    std::vector<UnicastRecord> unicastAddresses;
    bool up = false;
    bool loopback = false;
    bool multicast = false;
};

/// The adapters of the machine in the order of the system.
///
/// @param[out] table  receives the records; unspecified after a failure
/// @returns the system's error; to have no adapter at all is one
std::error_code readAdapterTable(std::vector<AdapterRecord>& table);

} // namespace foundation::network::platform
