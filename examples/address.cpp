#include <foundation/network/InetAddress.hpp>

#include <exception>
#include <iostream>

using foundation::network::InetAddress;

// Reads each argument as an IP address. No name is looked up.
int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i) {
        try {
            const InetAddress address(arguments[i]);
            std::cout << address.toString() << "  version " << address.getVersion()
                      << (address.isLoopback() ? ", of this machine alone" : "")
                      << (address.isLinkLocal() ? ", of one link alone" : "")
                      << (address.isMulticast() ? ", of a group" : "") << '\n';
        } catch (const std::exception& failure) {
            std::cout << arguments[i] << ": " << failure.what() << '\n';
        }
    }
}
