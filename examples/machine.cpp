#include <foundation/network/NetworkInterface.hpp>

#include <iostream>

using foundation::network::InterfaceAddress;
using foundation::network::NetworkInterface;

// The addresses of this machine: those of the adapters that are up.
int main()
{
    for (const NetworkInterface& adapter : NetworkInterface::list()) {
        if (adapter.isLoopback())
            continue;
        std::cout << "adapter " << adapter.getIdentifier() << "  "
                  << adapter.getHardwareAddress().toString() << '\n';
        for (const InterfaceAddress& address : adapter.getInterfaceAddresses())
            std::cout << "  " << address.toString() << '\n';
    }
}
