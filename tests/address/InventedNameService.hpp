#pragma once

#include <map>
#include <string>
#include <vector>

/// A name service for tests. Whoever links this and ReplacedNameService.cpp of the system's folder
/// replaces `getaddrinfo` and `getnameinfo` for the whole program, and nothing is asked of the real
/// one; and one of the functions of the system that Boost needs to get ready.
namespace foundation::network::tests {

/// What the name service knows, and what it was asked.
struct InventedNameService {
    std::map<std::string, std::vector<std::string>>
        addresses;                                     ///< of a name, with scopes as numbers
    std::map<std::string, std::string> canonicalNames; ///< where one is to be given
    std::map<std::string, std::string> names;          ///< of the text of an address
    int forwardFailure = 0;                            ///< what `getaddrinfo` answers, unless 0
    int reverseFailure = 0;                            ///< what `getnameinfo` answers, unless 0
    int systemFailure = 0; ///< what both leave as the system's last error
    int setUpFailure = 0;  ///< the system's error where Boost gets ready to ask, unless 0
    std::vector<std::string> questions;
};

/// The one that answers; tests change it.
InventedNameService& nameService();

} // namespace foundation::network::tests
