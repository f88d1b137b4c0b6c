#include "platform/StrictIPv4.hpp"

#include <winsock2.h>

// Declared here because not every compiler for Windows brings the header, which is ip2string.h.
extern "C" __declspec(dllimport) LONG
    __stdcall RtlIpv4StringToAddressA(const char* text, BOOLEAN strict, const char** end,
                                      in_addr* address);

namespace foundation::network::platform {

namespace {

    constexpr auto INVALID_PARAMETER = static_cast<LONG>(0xC000000DU); // STATUS_INVALID_PARAMETER

} // namespace

bool isStrictIPv4(const char* text) noexcept
{
    const char* end = text;
    in_addr address{};
    if (RtlIpv4StringToAddressA(text, TRUE, &end, &address) == INVALID_PARAMETER)
        return false;
    // It stops where the address ends, and does not mind what stands behind it.
    return *end == '\0';
}

} // namespace foundation::network::platform
