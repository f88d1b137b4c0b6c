#include "platform/SystemAnswers.hpp"

#include <cerrno>

#include <netdb.h>

namespace foundation::network::tests {

std::vector<NameServiceFailure> nameServiceFailures()
{
    return {
        {EAI_NONAME, 0, "asio.netdb", HOST_NOT_FOUND, "Host not found (authoritative)"},
        {EAI_NODATA, 0, "asio.netdb", HOST_NOT_FOUND, "Host not found (authoritative)"},
        {EAI_ADDRFAMILY, 0, "asio.netdb", HOST_NOT_FOUND, "Host not found (authoritative)"},
        temporaryFailure(),
        {EAI_FAIL, 0, "asio.netdb", NO_RECOVERY,
         "A non-recoverable error occurred during database lookup"},
        {EAI_SERVICE, 0, "asio.addrinfo", EAI_SERVICE, "Service not found"},
        {EAI_SOCKTYPE, 0, "asio.addrinfo", EAI_SOCKTYPE, "Socket type not supported"},
        {EAI_BADFLAGS, 0, "system", EINVAL, "Invalid argument"},
        {EAI_FAMILY, 0, "system", EAFNOSUPPORT, "Address family not supported by protocol"},
        {EAI_MEMORY, 0, "system", ENOMEM, "Cannot allocate memory"},
        {EAI_SYSTEM, EMFILE, "system", EMFILE, "Too many open files"},
        {EAI_SYSTEM, EIO, "system", EIO, "Input/output error"},
    };
}

std::vector<NameServiceFailure> failuresWithoutCode()
{
    std::vector<NameServiceFailure> result;
    for (const int answer : {EAI_SYSTEM, EAI_OVERFLOW, -12345})
        result.push_back({answer, 0, "asio.netdb", NO_RECOVERY,
                          "A non-recoverable error occurred during database lookup"});
    return result;
}

NameServiceFailure temporaryFailure()
{
    return {EAI_AGAIN, 0, "asio.netdb", TRY_AGAIN,
            "Host not found (non-authoritative), try again later"};
}

void setSystemFailure(int code)
{
    errno = code;
}

std::vector<int> systemFailures()
{
    return {EPERM, ENODATA, EMFILE, ENOMEM, EFAULT, ENAMETOOLONG};
}

bool isTypeInformationShared()
{
    return true;
}

std::map<std::string, std::string> ownAddressTexts()
{
    return {};
}

std::vector<std::pair<std::string, std::string>> scopedAddressTexts()
{
    // The first interface is there in every network.
    return {
        {"fe80::1%lo", "fe80::1%lo"},
        {"fe80::1%1", "fe80::1%lo"},
        {"ff02::1%lo", "ff02::1%lo"}, // a group of the link
        {"ff02::1%1", "ff02::1%lo"},
        {"ff05::1%1", "ff05::1%1"}, // of the site, which is no interface
        {"ff05::1%lo", "ff05::1"},
        {"::1%lo", "::1"},
        {"fe80::1%no such link", "fe80::1"},
        {"fe80::1%", "fe80::1"},
        {"fe80::1%2000000001x", "fe80::1%2000000001"},
    };
}

std::string refusalOf(std::string_view /*text*/)
{
    return "Invalid argument [system:22]";
}

bool isRestChecked()
{
    return true;
}

} // namespace foundation::network::tests
