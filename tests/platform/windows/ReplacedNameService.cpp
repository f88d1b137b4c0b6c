// Winsock's functions by which names are looked up, replaced for the whole program: it calls them
// through pointers, which the import library would else bring. So is the function with which Boost
// begins to make a context.

#include <winsock2.h>

#include <windows.h>
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

HANDLE WINAPI completionPort(HANDLE file, HANDLE port, ULONG_PTR key, DWORD threads)
{
    if (const int failure = tests::nameService().setUpFailure; failure != 0) {
        SetLastError(static_cast<DWORD>(failure));
        return nullptr;
    }
    const auto real = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "CreateIoCompletionPort");
    return reinterpret_cast<decltype(&completionPort)>(reinterpret_cast<void*>(real))(file, port,
                                                                                      key, threads);
}

} // namespace

extern "C" {

extern const decltype(&forwardLookup) __imp_getaddrinfo;
extern const decltype(&freeEntries) __imp_freeaddrinfo;
extern const decltype(&reverseLookup) __imp_getnameinfo;
extern const decltype(&completionPort) __imp_CreateIoCompletionPort;

const decltype(&forwardLookup) __imp_getaddrinfo = forwardLookup;
const decltype(&freeEntries) __imp_freeaddrinfo = freeEntries;
const decltype(&reverseLookup) __imp_getnameinfo = reverseLookup;
const decltype(&completionPort) __imp_CreateIoCompletionPort = completionPort;
}
