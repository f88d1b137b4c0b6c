#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>

#include "except/Throw.hpp"
#include "platform/HostName.hpp"

namespace foundation::network {

std::string getLocalHostName()
{
    std::u16string name;
    if (const std::error_code failure = platform::readHostName(name))
        core::except::throwSystemError(failure, "Call to GetComputerName failed.");
    return idn_to_ascii(name);
}

} // namespace foundation::network
