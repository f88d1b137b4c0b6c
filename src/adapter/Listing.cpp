#include "adapter/Listing.hpp"

#include "adapter/NetworkInterfaceImpl.hpp"
#include "except/Throw.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

namespace foundation::network::adapter {

namespace {

    using platform::AdapterRecord;
    using platform::Family;
    using platform::UnicastRecord;

    using Adapter = std::shared_ptr<const NetworkInterfaceImpl>;

    // An IPv6 address is taken without its scope, so that a link-local one shows no "%".
    InetAddress addressOf(const UnicastRecord& record)
    {
        if (record.family == Family::IPV6)
            return InetAddress(record.bytes);
        std::array<unsigned char, 4> bytes{};
        std::copy_n(record.bytes.begin(), bytes.size(), bytes.begin());
        return InetAddress(bytes);
    }

    std::string identifierOf(const AdapterRecord& record)
    {
        return std::to_string(record.index != 0 ? record.index : record.ipv6Index);
    }

    Adapter adapterOf(const AdapterRecord& record)
    {
        auto adapter = std::make_shared<NetworkInterfaceImpl>(
            identifierOf(record), record.friendlyName, record.description, record.up,
            record.loopback, record.multicast);
        adapter->setHardwareAddress(record.physicalAddress);
        for (const UnicastRecord& unicast : record.unicastAddresses) {
            if (unicast.family != Family::OTHER)
                adapter->addInterfaceAddress({addressOf(unicast), unicast.prefixLength});
        }
        return adapter;
    }

    std::vector<Adapter> takeSnapshot(const TableReader& read)
    {
        std::vector<AdapterRecord> table;
        if (const std::error_code failure = read(table))
            core::except::throwSystemError(failure, "Call to GetAdaptersAddresses failed.");
        std::vector<Adapter> adapters(table.size());
        std::ranges::transform(table, adapters.begin(), adapterOf);
        return adapters;
    }

    bool isActive(const Adapter& adapter)
    {
        return adapter->up() && !adapter->interfaceAddresses().empty();
    }

} // namespace

Listing::Range Listing::all(const TableReader& read)
{
    std::vector<NetworkInterface> adapters;
    for (Adapter& adapter : takeSnapshot(read))
        adapters.push_back(NetworkInterface(std::move(adapter)));
    return Range(std::move(adapters));
}

Listing::Range Listing::active(const TableReader& read)
{
    std::vector<NetworkInterface> adapters;
    for (Adapter& adapter : takeSnapshot(read)) {
        if (isActive(adapter))
            adapters.push_back(NetworkInterface(std::move(adapter)));
    }
    return Range(std::move(adapters));
}

} // namespace foundation::network::adapter
