// The C library's functions by which names are looked up, replaced for the whole program; and the one
// with which Boost begins to make a context.

#include <cstring>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/socket.h>

#include "address/InventedNameService.ipp"

namespace tests = foundation::network::tests;

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result)
{
    return tests::inventedForwardLookup(name, service, hints, result);
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" void freeaddrinfo(addrinfo* entry) noexcept
{
    tests::freeInvented(entry);
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" int getnameinfo(const sockaddr* address, socklen_t, char* host, socklen_t hostSize,
                           char* service, socklen_t serviceSize, int flags)
{
    return tests::inventedReverseLookup(address, {host, hostSize}, {service, serviceSize}, flags);
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" int pthread_condattr_init(pthread_condattr_t* attributes) noexcept
{
    std::memset(attributes, 0, sizeof *attributes); // as glibc does
    return tests::nameService().setUpFailure;
}
