#include "platform/SystemAnswers.hpp"

#include <set>

#include <winsock2.h>

#include <ws2tcpip.h>

namespace foundation::network::tests {

namespace {

    // On Windows all failures of the name service are codes of the system, whose texts are in its
    // language.
    NameServiceFailure failure(int answer, int value)
    {
        return {answer, 0, "system", value, std::system_category().message(value)};
    }

} // namespace

std::vector<NameServiceFailure> nameServiceFailures()
{
    return {
        failure(EAI_NONAME, WSAHOST_NOT_FOUND),
        temporaryFailure(),
        failure(EAI_FAIL, WSANO_RECOVERY),
        failure(EAI_SERVICE, WSATYPE_NOT_FOUND),
        failure(EAI_SOCKTYPE, WSAESOCKTNOSUPPORT),
        failure(EAI_BADFLAGS, WSAEINVAL),
        failure(EAI_FAMILY, WSAEAFNOSUPPORT),
        failure(EAI_MEMORY, ERROR_OUTOFMEMORY),
        {-1, WSAEMFILE, "system", WSAEMFILE, std::system_category().message(WSAEMFILE)},
        {-1, WSANOTINITIALISED, "system", WSANOTINITIALISED,
         std::system_category().message(WSANOTINITIALISED)},
    };
}

std::vector<NameServiceFailure> failuresWithoutCode()
{
    return {failure(-1, WSANO_RECOVERY), failure(-12345, WSANO_RECOVERY)};
}

NameServiceFailure temporaryFailure()
{
    return failure(EAI_AGAIN, WSATRY_AGAIN);
}

void setSystemFailure(int code)
{
    WSASetLastError(code);
}

std::vector<int> systemFailures()
{
    return {ERROR_ACCESS_DENIED, ERROR_NO_DATA, ERROR_NOT_ENOUGH_MEMORY, ERROR_MORE_DATA,
            ERROR_INVALID_PARAMETER};
}

bool isTypeInformationShared()
{
    return false;
}

std::map<std::string, std::string> ownAddressTexts()
{
    return {{"[::1]", "::1"}, {"[::1]:80", "::1"}, {"1.2.3.4:80", "1.2.3.4"}};
}

std::vector<std::pair<std::string, std::string>> scopedAddressTexts()
{
    return {
        {"fe80::1%1", "fe80::1%1"},
        {"ff02::1%1", "ff02::1%1"},
        {"ff05::1%1", "ff05::1%1"},
        {"fe80::1%lo", ""},
        {"::1%lo", ""},
        {"fe80::1%", ""},
        {"fe80::1%2000000001x", ""},
    };
}

std::string refusalOf(std::string_view text)
{
    // What the parser takes besides four decimal parts.
    static const std::set<std::string_view> lax = {
        "127",        "127.1",      "127.0.1",  "127.1:80", "2130706433",
        "0x7f.0.0.1", "0x7f000001", "01.2.3.4", "1.2.3.04", "01.2.3.4:80",
    };
    if (lax.count(text) != 0)
        return "Invalid IP address string: " + std::string(text);
    return std::system_category().message(WSAEINVAL) + " [system:" + std::to_string(WSAEINVAL)
           + "]";
}

bool isRestChecked()
{
    return false;
}

} // namespace foundation::network::tests
