#include "platform/StrictIPv4.hpp"

#include <arpa/inet.h>

namespace foundation::network::platform {

bool isStrictIPv4(const char* text) noexcept
{
    // Unlike inet_aton, inet_pton takes nothing but four decimal numbers.
    in_addr address{};
    return inet_pton(AF_INET, text, &address) == 1;
}

} // namespace foundation::network::platform
