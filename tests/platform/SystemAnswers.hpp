#pragma once

#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

/// What the systems answer differently, for the tests that run on each of them. The folder of each
/// system has a source for it.
namespace foundation::network::tests {

/// What `getaddrinfo` or `getnameinfo` answers, and what a caller of the library is to see of it.
struct NameServiceFailure {
    int answer = 0;
    int systemFailure = 0; ///< what the call leaves behind as the system's last error
    std::string category;  ///< "system" is `std::system_category()`; the others are Boost's
    int value = 0;
    std::string text;
};

/// All of them; the first says that there is no such name.
std::vector<NameServiceFailure> nameServiceFailures();

/// Those where the system says that nothing has failed.
std::vector<NameServiceFailure> failuresWithoutCode();

/// The one that may pass.
NameServiceFailure temporaryFailure();

/// Sets the system's last error.
void setSystemFailure(int code);

/// A few codes of `std::system_category()`, of which none means success.
std::vector<int> systemFailures();

/// Whether the type information of a class is one object for all modules of a program. Where it is
/// not, a handler knows the class by its name.
bool isTypeInformationShared();

/// Texts that the parser of this system takes for addresses and that of another does not, each with
/// the address.
std::map<std::string, std::string> ownAddressTexts();

/// Texts whose scope the systems take differently, each with what the address shows, or with nothing if
/// the text is refused.
std::vector<std::pair<std::string, std::string>> scopedAddressTexts();

/// The failure with which a text is refused that is no address: that of the parser of addresses or,
/// if this system's parser takes the text for IPv4, that of the second, strict check.
std::string refusalOf(std::string_view text);

/// Whether the strict check of IPv4 reads what stands behind the four parts, and refuses it.
bool isRestChecked();

} // namespace foundation::network::tests
