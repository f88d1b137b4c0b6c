// The invented name service behind the system's own types. A source for one system includes the
// headers that declare these, and then this file; Linux and Windows have the same names for them.

#include "address/InventedNameService.hpp"

#include "platform/SystemAnswers.hpp"

#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

namespace foundation::network::tests {

namespace {

    std::string forwardQuestion(const char* name, const char* service, const addrinfo* hints)
    {
        std::string question = name != nullptr ? std::string("forward ") + name : "forward nothing";
        question += service != nullptr ? std::string(" service ") + service : "";
        question += hints->ai_family == AF_UNSPEC ? " any" : " one";
        question += hints->ai_socktype == SOCK_STREAM ? " stream" : " other";
        question += hints->ai_protocol == IPPROTO_TCP ? " tcp" : " other";
        int flags = hints->ai_flags;
        const auto take = [&](int flag, const char* text) {
            question += (flags & flag) != 0 ? text : "";
            flags &= ~flag;
        };
        take(AI_ADDRCONFIG, " configured");
        take(AI_CANONNAME, " canonical");
        return question + (flags != 0 ? " more" : "");
    }

    char* copyOf(const std::string& text)
    {
        auto* const copy = static_cast<char*>(std::malloc(text.size() + 1));
        std::memcpy(copy, text.c_str(), text.size() + 1);
        return copy;
    }

    // An entry and its address in one block, so that they are freed together.
    struct Entry {
        addrinfo info;
        sockaddr_storage address;
    };

    addrinfo* entryFor(const std::string& text)
    {
        auto* const entry = static_cast<Entry*>(std::calloc(1, sizeof(Entry)));
        entry->info.ai_socktype = SOCK_STREAM;
        entry->info.ai_protocol = IPPROTO_TCP;
        entry->info.ai_addr = reinterpret_cast<sockaddr*>(&entry->address);
        const std::size_t percent = text.find('%');
        const std::string digits = text.substr(0, percent);

        sockaddr_in four{};
        sockaddr_in6 six{};
        if (inet_pton(AF_INET, digits.c_str(), &four.sin_addr) == 1) {
            four.sin_family = AF_INET;
            std::memcpy(&entry->address, &four, sizeof four);
            entry->info.ai_family = AF_INET;
            entry->info.ai_addrlen = sizeof four;
        } else if (inet_pton(AF_INET6, digits.c_str(), &six.sin6_addr) == 1) {
            six.sin6_family = AF_INET6;
            if (percent != std::string::npos)
                six.sin6_scope_id =
                    static_cast<std::uint32_t>(std::stoul(text.substr(percent + 1)));
            std::memcpy(&entry->address, &six, sizeof six);
            entry->info.ai_family = AF_INET6;
            entry->info.ai_addrlen = sizeof six;
        }
        return &entry->info;
    }

    std::string textOf(const sockaddr* address)
    {
        char text[INET6_ADDRSTRLEN] = {};
        if (address->sa_family == AF_INET) {
            sockaddr_in four{};
            std::memcpy(&four, address, sizeof four);
            return inet_ntop(AF_INET, &four.sin_addr, text, sizeof text);
        }
        sockaddr_in6 six{};
        std::memcpy(&six, address, sizeof six);
        const std::string digits = inet_ntop(AF_INET6, &six.sin6_addr, text, sizeof text);
        return six.sin6_scope_id == 0 ? digits : digits + "%" + std::to_string(six.sin6_scope_id);
    }

} // namespace

// As `getaddrinfo`.
inline int inventedForwardLookup(const char* name, const char* service, const addrinfo* hints,
                                 addrinfo** result)
{
    nameService().questions.push_back(forwardQuestion(name, service, hints));
    if (nameService().forwardFailure != 0) {
        setSystemFailure(nameService().systemFailure);
        return nameService().forwardFailure;
    }
    if (name == nullptr && service == nullptr)
        return EAI_NONAME; // RFC 3493, 6.1
    const auto found = nameService().addresses.find(name);
    if (found == nameService().addresses.end())
        return EAI_NONAME;

    addrinfo** next = result;
    for (const std::string& text : found->second) {
        *next = entryFor(text);
        next = &(*next)->ai_next;
    }
    const auto canonical = nameService().canonicalNames.find(name);
    if ((hints->ai_flags & AI_CANONNAME) != 0 && canonical != nameService().canonicalNames.end())
        (*result)->ai_canonname = copyOf(canonical->second);
    return 0;
}

// As `freeaddrinfo`.
inline void freeInvented(addrinfo* entry) noexcept
{
    while (entry != nullptr) {
        addrinfo* const next = entry->ai_next;
        std::free(entry->ai_canonname);
        std::free(entry);
        entry = next;
    }
}

// As `getnameinfo`.
inline int inventedReverseLookup(const sockaddr* address, std::span<char> host,
                                 std::span<char> service, int flags)
{
    const std::string text = textOf(address);
    nameService().questions.push_back("reverse " + text
                                      + (flags == 0                ? ""
                                         : flags == NI_NUMERICSERV ? " numeric service"
                                                                   : " other flags"));
    if (nameService().reverseFailure != 0) {
        setSystemFailure(nameService().systemFailure);
        return nameService().reverseFailure;
    }
    const auto found = nameService().names.find(text);
    const std::string name = found == nameService().names.end() ? text : found->second;
    if (name.size() >= host.size() || service.size() < 2)
        return EAI_FAIL;
    std::memcpy(host.data(), name.c_str(), name.size() + 1);
    std::memcpy(service.data(), "0", 2);
    return 0;
}

} // namespace foundation::network::tests
