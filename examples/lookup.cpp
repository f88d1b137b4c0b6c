#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>

#include <iostream>
#include <string>
#include <system_error>

using foundation::network::InetAddress;

// The addresses for which a name stands. This waits until the name service has answered.
int main()
{
    const std::string name = foundation::network::idn_to_ascii(u"bücher.example.org");
    try {
        for (const InetAddress& address : InetAddress::getAllByName(name))
            std::cout << name << "  " << address.toString() << '\n';
    } catch (const std::system_error& failure) {
        std::cout << name << ": " << failure.what() << '\n';
    }
}
