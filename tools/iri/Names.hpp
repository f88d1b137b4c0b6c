#pragma once

#include <foundation/network/IdnConverter.hpp>

#include <string>

namespace tool {

/// A domain name in both forms.
struct DomainName {
    std::string ascii;
    std::string unicode;
    std::string problem;   ///< why not all of the name is in them; empty if all is
    bool hasForms = false; ///< whether any of it is; an empty name is
};

/// Converts domain names in UTF-8, as the library does.
class Names {
public:
    /// @throws foundation::network::IdnConverterException
    Names() = default;

    /// @param name  valid UTF-8, in either form
    /// @throws foundation::network::IdnConverterException, but not on account of the name
    DomainName convert(const std::string& name) const;

private:
    foundation::network::IdnConverter converter_;
};

} // namespace tool
