#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace foundation::network::platform {

/// Tells what a link is: the alias that somebody gave it, or else the name of its driver. Holds a
/// socket, through which the kernel is asked.
class LinkDescription {
public:
    LinkDescription();
    LinkDescription(const LinkDescription&) = delete;
    LinkDescription& operator=(const LinkDescription&) = delete;
    ~LinkDescription();

    /// Empty if the kernel knows nothing.
    std::string describe(const std::string& name, std::uint32_t index,
                         const std::vector<unsigned char>& address) const;

private:
    std::string driverOf(const std::string& name) const;

    int socket_;
};

} // namespace foundation::network::platform
