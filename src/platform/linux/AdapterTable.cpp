#include "platform/AdapterTable.hpp"

#include "platform/linux/LinkDescription.hpp"
#include "platform/linux/SystemText.hpp"

#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <unordered_map>

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netpacket/packet.h>

namespace foundation::network::platform {

namespace {

    using Entries = std::unique_ptr<ifaddrs, decltype(&freeifaddrs)>;

    // A copy of the platform's record of an address, which may be laid out for another type.
    template <class Address>
    Address readAs(const sockaddr* address) noexcept
    {
        Address result{};
        std::memcpy(&result, address, sizeof result);
        return result;
    }

    // The address behind the fixed part of the record, at its full length: the declared array ends
    // after eight bytes, and links of some kinds have more.
    std::vector<unsigned char> linkAddress(const sockaddr* address)
    {
        const auto* bytes = reinterpret_cast<const unsigned char*>(address);
        const std::size_t length = bytes[offsetof(sockaddr_ll, sll_halen)];
        const unsigned char* first = bytes + offsetof(sockaddr_ll, sll_addr);
        return {first, first + length};
    }

    // The number that the kernel told along with the address of a link; 0 where it told none.
    std::uint32_t toldIndex(const sockaddr* address) noexcept
    {
        int index = 0;
        std::memcpy(&index,
                    reinterpret_cast<const unsigned char*>(address)
                        + offsetof(sockaddr_ll, sll_ifindex),
                    sizeof index);
        return static_cast<std::uint32_t>(index);
    }

    template <std::size_t COUNT>
    std::uint8_t countBits(const unsigned char (&mask)[COUNT]) noexcept
    {
        int bits = 0;
        for (const unsigned char byte : mask)
            bits += std::popcount(byte);
        return static_cast<std::uint8_t>(bits);
    }

    template <std::size_t COUNT>
    UnicastRecord unicastRecord(Family family, const void* address, const void* mask) noexcept
    {
        UnicastRecord record;
        record.family = family;
        std::memcpy(record.bytes.data(), address, COUNT);
        unsigned char maskBytes[COUNT];
        std::memcpy(maskBytes, mask, COUNT);
        record.prefixLength = countBits(maskBytes);
        return record;
    }

    UnicastRecord readUnicast(const ifaddrs& entry)
    {
        if (entry.ifa_netmask == nullptr)
            return {};
        switch (entry.ifa_addr->sa_family) {
        case AF_INET: {
            const auto address = readAs<sockaddr_in>(entry.ifa_addr);
            const auto mask = readAs<sockaddr_in>(entry.ifa_netmask);
            return unicastRecord<4>(Family::IPV4, &address.sin_addr, &mask.sin_addr);
        }
        case AF_INET6: {
            const auto address = readAs<sockaddr_in6>(entry.ifa_addr);
            const auto mask = readAs<sockaddr_in6>(entry.ifa_netmask);
            return unicastRecord<16>(Family::IPV6, &address.sin6_addr, &mask.sin6_addr);
        }
        default:
            return {};
        }
    }

    // Collects the entries, of which a link has one for itself and one for each address.
    class Table {
    public:
        explicit Table(std::vector<AdapterRecord>& records)
            : records_(records)
        {
            records_.clear();
        }

        std::error_code add(const ifaddrs& entry)
        {
            if (entry.ifa_addr == nullptr || entry.ifa_addr->sa_family == AF_PACKET)
                return addLink(entry);
            addAddress(entry);
            return {};
        }

    private:
        using Positions = std::unordered_map<std::string, std::size_t>;

        static constexpr std::size_t GONE = static_cast<std::size_t>(-1);

        std::error_code addLink(const ifaddrs& entry)
        {
            const std::string name = entry.ifa_name;
            const auto [position, isNew] = positions_.try_emplace(name, records_.size());
            if (!isNew)
                return {};

            AdapterRecord record;
            if (entry.ifa_addr != nullptr) {
                record.index = toldIndex(entry.ifa_addr);
                record.physicalAddress = linkAddress(entry.ifa_addr);
            }
            // A link without an address comes without its number. The kernel may refuse to tell it,
            // and the link may be gone by now: then it is left out.
            if (record.index == 0)
                record.index = if_nametoindex(entry.ifa_name);
            if (record.index == 0) {
                position->second = GONE;
                return errno == ENODEV ? std::error_code()
                                       : std::error_code(errno, std::system_category());
            }
            record.friendlyName = fromSystemText(name);
            record.description =
                fromSystemText(descriptions_.describe(name, record.index, record.physicalAddress));
            constexpr unsigned UP_AND_RUNNING = IFF_UP | IFF_RUNNING;
            record.up = (entry.ifa_flags & UP_AND_RUNNING) == UP_AND_RUNNING;
            record.loopback = (entry.ifa_flags & IFF_LOOPBACK) != 0;
            record.multicast = (entry.ifa_flags & IFF_MULTICAST) != 0;
            records_.push_back(std::move(record));
            return {};
        }

        void addAddress(const ifaddrs& entry)
        {
            const auto position = positionOf(entry.ifa_name);
            if (position != positions_.end() && position->second != GONE)
                records_[position->second].unicastAddresses.push_back(readUnicast(entry));
        }

        // An IPv4 address may have a label of its own in place of the link's name, with which the
        // label begins: "eth0:1", or anything else behind "eth0".
        Positions::const_iterator positionOf(const std::string& label) const
        {
            std::string name = label.substr(0, label.find(':')); // which no link has in its name
            auto position = positions_.find(name);
            // The name of a link that came after the others had been listed is no label of theirs.
            if (position != positions_.end() || if_nametoindex(name.c_str()) != 0)
                return position;
            while (position == positions_.end() && !name.empty()) {
                name.pop_back();
                position = positions_.find(name);
            }
            return position;
        }

        std::vector<AdapterRecord>& records_;
        Positions positions_; // of each link, by its name
        LinkDescription descriptions_;
    };

} // namespace

std::error_code readAdapterTable(std::vector<AdapterRecord>& table)
{
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0)
        return {errno, std::system_category()};
    const Entries entries(first, &freeifaddrs);

    Table result(table);
    // The kernel names all links before the first address.
    for (const ifaddrs* entry = entries.get(); entry != nullptr; entry = entry->ifa_next) {
        if (const std::error_code failure = result.add(*entry))
            return failure;
    }
    if (table.empty())
        return {ENODATA, std::system_category()};
    return {};
}

} // namespace foundation::network::platform
