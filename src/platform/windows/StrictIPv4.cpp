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
    // Neither the address nor where it ends is of interest: the parser has decided about that.
    const char* end = text;
    in_addr address{};
    return RtlIpv4StringToAddressA(text, TRUE, &end, &address) != INVALID_PARAMETER;
}

} // namespace foundation::network::platform
