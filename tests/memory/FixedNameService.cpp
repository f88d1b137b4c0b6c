// A name service that knows one answer to all questions and takes no memory by operator new: what
// fails for want of memory is the library, not the service.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace {

struct Entry {
    addrinfo info;
    sockaddr_in6 address;
};

addrinfo* entryFor(const char* text)
{
    auto* const entry = static_cast<Entry*>(std::calloc(1, sizeof(Entry)));
    entry->info.ai_family = AF_INET6;
    entry->info.ai_socktype = SOCK_STREAM;
    entry->info.ai_protocol = IPPROTO_TCP;
    entry->info.ai_addr = reinterpret_cast<sockaddr*>(&entry->address);
    entry->info.ai_addrlen = sizeof entry->address;
    entry->address.sin6_family = AF_INET6;
    inet_pton(AF_INET6, text, &entry->address.sin6_addr);
    return &entry->info;
}

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" int getaddrinfo(const char*, const char*, const addrinfo* hints, addrinfo** result)
{
    *result = entryFor("2001:db8::1");
    (*result)->ai_next = entryFor("2001:db8::2");
    if ((hints->ai_flags & AI_CANONNAME) != 0)
        (*result)->ai_canonname = strdup("a-canonical-name-of-some-length.example.org");
    return 0;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" void freeaddrinfo(addrinfo* entry) noexcept
{
    while (entry != nullptr) {
        addrinfo* const next = entry->ai_next;
        std::free(entry->ai_canonname);
        std::free(entry);
        entry = next;
    }
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names for readers
extern "C" int getnameinfo(const sockaddr*, socklen_t, char* host, socklen_t hostSize,
                           char* service, socklen_t serviceSize, int)
{
    constexpr char NAME[] = "a-name-that-is-long-enough-for-the-heap.example.org";
    if (hostSize < sizeof NAME || serviceSize < 2)
        return EAI_OVERFLOW;
    std::memcpy(host, NAME, sizeof NAME);
    std::memcpy(service, "0", 2);
    return 0;
}
