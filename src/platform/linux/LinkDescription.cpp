#include "platform/linux/LinkDescription.hpp"

#include "text/ColonHexadecimal.hpp"

#include <cstring>
#include <fstream>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace foundation::network::platform {

namespace {

    // The first line of a file below /sys/class/net; empty if it cannot be read.
    std::string attribute(const std::string& name, const char* which)
    {
        std::ifstream file("/sys/class/net/" + name + "/" + which);
        std::string line;
        std::getline(file, line);
        return line;
    }

    // /sys shows the network namespace of whoever mounted it, which need not be this one. A link of
    // the same name, number and address is taken for the same.
    bool isSeenInSys(const std::string& name, std::uint32_t index,
                     const std::vector<unsigned char>& address)
    {
        return attribute(name, "ifindex") == std::to_string(index)
               && attribute(name, "address") == text::toColonHexadecimal(address);
    }

} // namespace

LinkDescription::LinkDescription()
    : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
}

LinkDescription::~LinkDescription()
{
    if (socket_ >= 0)
        close(socket_);
}

std::string LinkDescription::describe(const std::string& name, std::uint32_t index,
                                      const std::vector<unsigned char>& address) const
{
    std::string alias = attribute(name, "ifalias");
    if (!alias.empty() && isSeenInSys(name, index, address))
        return alias;
    return driverOf(name);
}

std::string LinkDescription::driverOf(const std::string& name) const
{
    ethtool_drvinfo driver{};
    driver.cmd = ETHTOOL_GDRVINFO;
    ifreq request{};
    name.copy(request.ifr_name, sizeof request.ifr_name - 1);
    request.ifr_data = reinterpret_cast<char*>(&driver);
    // Without a socket this fails like any other question that the kernel cannot answer.
    if (ioctl(socket_, SIOCETHTOOL, &request) != 0)
        return {};
    return {driver.driver, strnlen(driver.driver, sizeof driver.driver)};
}

} // namespace foundation::network::platform
