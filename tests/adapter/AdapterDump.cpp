// Prints what the library says about the adapters of the machine, as JSON for kernel.py.

#include <foundation/network/NetworkInterface.hpp>

#include "address/JsonText.hpp"

#include <exception>
#include <iostream>
#include <string>

namespace {

using namespace foundation::network;
using tests::jsonArray;
using tests::jsonText;

std::string jsonBool(bool value)
{
    return value ? "true" : "false";
}

std::string jsonOf(const InterfaceAddress& address)
{
    const InetAddress inner = address.getInetAddress();
    return "{\"text\":" + jsonText(address.toString()) + ",\"address\":"
           + jsonText(inner.toString()) + ",\"version\":" + std::to_string(inner.getVersion())
           + ",\"prefixLength\":" + std::to_string(address.prefixLength()) + ",\"linkLocal\":"
           + jsonBool(inner.isLinkLocal()) + ",\"loopback\":" + jsonBool(inner.isLoopback()) + "}";
}

std::string jsonOf(const NetworkInterface& adapter)
{
    const HardwareAddress hardware = adapter.getHardwareAddress();
    return "{\"identifier\":" + jsonText(adapter.getIdentifier())
           + ",\"friendlyName\":" + jsonText(adapter.getFriendlyName())
           + ",\"description\":" + jsonText(adapter.getDescription())
           + ",\"hardwareAddress\":" + jsonText(hardware.toString())
           + ",\"hardwareBytes\":" + std::to_string(hardware.size()) + ",\"interfaceAddresses\":"
           + jsonArray(adapter.getInterfaceAddresses(),
                       [](const InterfaceAddress& address) { return jsonOf(address); })
           + ",\"inetAddresses\":"
           + jsonArray(adapter.getInetAddresses(),
                       [](const InetAddress& address) { return jsonText(address.toString()); })
           + ",\"up\":" + jsonBool(adapter.isUp())
           + ",\"loopback\":" + jsonBool(adapter.isLoopback())
           + ",\"multicast\":" + jsonBool(adapter.supportsMulticast()) + "}";
}

template <class Range>
std::string jsonOfAll(const Range& adapters)
{
    return jsonArray(adapters, [](const NetworkInterface& adapter) { return jsonOf(adapter); });
}

} // namespace

int main()
{
    try {
        std::cout << "{\"list\":" << jsonOfAll(NetworkInterface::list())
                  << ",\"listAll\":" << jsonOfAll(NetworkInterface::listAll()) << "}\n";
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
