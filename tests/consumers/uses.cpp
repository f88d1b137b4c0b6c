// A little of everything that the headers hold, for the compiler to warn of what its use brings along.

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include <exception>
#include <iostream>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>

namespace network = foundation::network;

namespace {

void useIris(const std::string& text)
{
    network::IRIArgs args;
    args.setScheme("https").setHost("example.org").setPort(8080).setPath("/a b");
    args.appendQueryKeyValuePair("key", "value", true, false);
    const network::IRI base(args);

    network::IRI iri(text);
    network::IRI copy = iri;
    std::swap(iri, copy);
    copy = iri.resolveAgainst(base);
    iri = std::move(copy);

    const std::set<network::IRI> sorted{base, iri};
    const std::unordered_set<network::IRI> hashed{base, iri};
    std::cout << sorted.size() << ' ' << hashed.size() << ' ' << iri << ' '
              << iri.getPathUtf8(network::iri::Encoding::Decoded) << '\n';
}

void useViews(const std::string& text)
{
    if (const auto view = network::iri::IRIView::parse(text); view && view->query())
        for (const network::iri::QueryPair& pair : network::iri::QueryPairs(*view->query()))
            std::cout << pair.key << '=' << pair.value << '\n';
    if (network::iri::diagnose(text))
        std::cout << network::iri::repair(text).has_value() << '\n';
}

void useAddresses()
{
    for (const network::NetworkInterface& adapter : network::NetworkInterface::list()) {
        for (const network::InterfaceAddress& address : adapter.getInterfaceAddresses())
            std::cout << address.toString() << ' ' << address.getInetAddress().toString() << '\n';
        for (const unsigned char byte : adapter.getHardwareAddress())
            std::cout << static_cast<int>(byte) << '\n';
    }
    network::InetAddress address(std::string("192.0.2.1"));
    const network::InetAddress moved = std::move(address);
    std::cout << moved.toString() << '\n';
}

[[noreturn]] void fail()
{
    using foundation::core::except::AnonymousInternalException;
    throw AnonymousInternalException<std::logic_error>(std::logic_error("of a caller"));
}

} // namespace

int main()
{
    try {
        useIris("../c?d");
        useViews("http://h/?a=b");
        useAddresses();
        std::cout << network::IdnConverter().toAscii(u"b\u00FCcher.example") << '\n';
        fail();
    } catch (const foundation::core::except::IInternalException& failure) {
        std::cout << failure.what() << '\n';
    } catch (const std::exception& failure) {
        std::cout << failure.what() << '\n';
    }
}
