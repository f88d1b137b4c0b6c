// Winsock's functions by which names are looked up, replaced for the whole program: it calls them
// through pointers, which the import library would else bring.

#include <winsock2.h>

#include <ws2tcpip.h>

#include "address/InventedNameService.ipp"

namespace {

namespace tests = foundation::network::tests;

int WSAAPI forwardLookup(const char* name, const char* service, const addrinfo* hints,
                         addrinfo** result)
{
    return tests::inventedForwardLookup(name, service, hints, result);
}

void WSAAPI freeEntries(addrinfo* entry)
{
    tests::freeInvented(entry);
}

int WSAAPI reverseLookup(const sockaddr* address, socklen_t, char* host, DWORD hostSize,
                         char* service, DWORD serviceSize, int flags)
{
    return tests::inventedReverseLookup(address, {host, hostSize}, {service, serviceSize}, flags);
}

} // namespace

extern "C" {

extern const decltype(&forwardLookup) __imp_getaddrinfo;
extern const decltype(&freeEntries) __imp_freeaddrinfo;
extern const decltype(&reverseLookup) __imp_getnameinfo;

const decltype(&forwardLookup) __imp_getaddrinfo = forwardLookup;
const decltype(&freeEntries) __imp_freeaddrinfo = freeEntries;
const decltype(&reverseLookup) __imp_getnameinfo = reverseLookup;
}
