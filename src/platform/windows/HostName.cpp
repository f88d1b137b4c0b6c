#include "platform/HostName.hpp"

#include "platform/windows/WideText.hpp"

#include <array>

#include <windows.h>

namespace foundation::network::platform {

namespace {

    constexpr std::size_t LIMIT = 32; // units, with the zero at the end

} // namespace

std::error_code readHostName(std::u16string& name)
{
    std::array<wchar_t, LIMIT> buffer{};
    auto size = static_cast<DWORD>(buffer.size());
    // The name by which other machines know this one, whatever cluster it stands for.
    if (GetComputerNameExW(ComputerNamePhysicalDnsHostname, buffer.data(), &size) == 0)
        return {static_cast<int>(GetLastError()), std::system_category()};
    name = fromWideText({buffer.data(), size});
    return {};
}

} // namespace foundation::network::platform
