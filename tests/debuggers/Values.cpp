#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <array>
#include <string>
#include <utility>
#include <vector>

using namespace foundation::network;

// Values for a debugger, which stops where they are shown to nobody.

namespace {

volatile int times = 0;

void show(const std::vector<IRI>& several)
{
    times = times + static_cast<int>(several.size());
}

} // namespace

int main()
{
    const IRI empty;
    const IRI parsed(std::string("https://u@é.example:080/a%20b?q#"));
    const IRI relative(std::string("../a'b"));
    IRIArgs args;
    const IRIArgs nothing;
    args.setScheme("http").setHost("h").setPort(80).setPath("/a b").setQuery("");
    const IRI built(args);
    const IRI literal(std::string("http://[::1]"));
    IRI source(std::string("x:y"));
    const IRI moved(std::move(source));
    IRI assigned;
    IRI other(std::string("x://h/y"));
    assigned = std::move(other);
    const IRI resolved = relative.resolveAgainst(parsed);

    const InetAddress four(std::array<unsigned char, 4>{192, 0, 2, 1});
    const InetAddress six(std::string("2001:db8::5"));
    const InetAddress named = InetAddress::getByName("127.0.0.1");
    const InterfaceAddress prefixed(six, 64);
    const HardwareAddress hardware({0x02, 0x00, 0xAB});
    const HardwareAddress noHardware;
    const NetworkInterface adapter = *NetworkInterface::listAll().begin();

    show({relative, moved});
    return times == 2 ? 0 : 1;
}
