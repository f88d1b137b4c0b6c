#include "platform/HostName.hpp"

#include "platform/linux/SystemText.hpp"

#include <array>
#include <cerrno>
#include <climits>
#include <string_view>

#include <unistd.h>

namespace foundation::network::platform {

std::error_code readHostName(std::u16string& name)
{
    std::array<char, HOST_NAME_MAX + 1> buffer{};
    if (gethostname(buffer.data(), buffer.size()) != 0) {
        return {errno, std::system_category()};
    }
    // POSIX leaves open whether a name that was cut off ends in NUL.
    const std::string_view whole(buffer.data(), buffer.size());
    const std::size_t length = whole.find('\0');
    if (length == std::string_view::npos) {
        return {ENAMETOOLONG, std::system_category()};
    }
    const std::string_view node = whole.substr(0, length);
    name = fromSystemText(node.substr(0, node.find('.')));
    return {};
}

} // namespace foundation::network::platform
