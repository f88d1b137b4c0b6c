#include "platform/AdapterTable.hpp"

#include "platform/windows/WideText.hpp"

#include <cstring>

// Winsock's own types come first: the others build on them.
#include <winsock2.h>

#include <iphlpapi.h>
#include <ws2tcpip.h>

namespace foundation::network::platform {

namespace {

    constexpr std::size_t FIRST_GUESS = 15000; // bytes, which suffice for most machines

    // A copy of the platform's record of an address, which may be laid out for another type.
    template <class Address>
    Address readAs(const sockaddr* address) noexcept
    {
        Address result{};
        std::memcpy(&result, address, sizeof result);
        return result;
    }

    template <std::size_t COUNT>
    UnicastRecord unicastRecord(Family family, const void* address, std::uint8_t prefixLength)
    {
        UnicastRecord record;
        record.family = family;
        std::memcpy(record.bytes.data(), address, COUNT);
        record.prefixLength = prefixLength;
        return record;
    }

    UnicastRecord readUnicast(const IP_ADAPTER_UNICAST_ADDRESS& entry)
    {
        const sockaddr* const address = entry.Address.lpSockaddr;
        switch (address->sa_family) {
        case AF_INET: {
            const auto four = readAs<sockaddr_in>(address);
            return unicastRecord<4>(Family::IPV4, &four.sin_addr, entry.OnLinkPrefixLength);
        }
        case AF_INET6: {
            const auto six = readAs<sockaddr_in6>(address);
            return unicastRecord<16>(Family::IPV6, &six.sin6_addr, entry.OnLinkPrefixLength);
        }
        default:
            return {};
        }
    }

    std::u16string orEmpty(const wchar_t* text)
    {
        return text == nullptr ? std::u16string() : fromWideText(text);
    }

    AdapterRecord readAdapter(const IP_ADAPTER_ADDRESSES& entry)
    {
        AdapterRecord record;
        record.index = entry.IfIndex;
        record.ipv6Index = entry.Ipv6IfIndex;
        record.friendlyName = orEmpty(entry.FriendlyName);
        record.description = orEmpty(entry.Description);
        record.physicalAddress.assign(entry.PhysicalAddress,
                                      entry.PhysicalAddress + entry.PhysicalAddressLength);
        for (const auto* unicast = entry.FirstUnicastAddress; unicast != nullptr;
             unicast = unicast->Next)
            record.unicastAddresses.push_back(readUnicast(*unicast));
        record.up = entry.OperStatus == IfOperStatusUp;
        record.loopback = entry.IfType == IF_TYPE_SOFTWARE_LOOPBACK;
        record.multicast = (entry.Flags & IP_ADAPTER_NO_MULTICAST) == 0;
        return record;
    }

} // namespace

std::error_code readAdapterTable(std::vector<AdapterRecord>& table)
{
    std::vector<unsigned char> buffer(FIRST_GUESS);
    // What operator new gives is aligned for any type.
    const auto first = [&] { return reinterpret_cast<IP_ADAPTER_ADDRESSES*>(buffer.data()); };
    for (;;) {
        auto size = static_cast<ULONG>(buffer.size());
        const ULONG result =
            GetAdaptersAddresses(AF_UNSPEC, GAA_FLAG_SKIP_DNS_SERVER, nullptr, first(), &size);
        if (result == ERROR_SUCCESS)
            break;
        if (result != ERROR_BUFFER_OVERFLOW)
            return {static_cast<int>(result), std::system_category()};
        // The table may have grown again by the next call: as often as it does, it is read anew.
        buffer.resize(size);
    }

    table.clear();
    for (const IP_ADAPTER_ADDRESSES* entry = first(); entry != nullptr; entry = entry->Next)
        table.push_back(readAdapter(*entry));
    return {};
}

} // namespace foundation::network::platform
