#include "Target.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    foundation::network::fuzz::run(
        foundation::network::fuzz::Input({reinterpret_cast<const char*>(data), size}));
    return 0;
}

namespace foundation::network::fuzz {

void require(bool holds, std::string_view property)
{
    if (holds)
        return;
    std::cerr << "does not hold: " << property << std::endl;
    std::abort();
}

void require(const testing::AssertionResult& result)
{
    require(result, result.message());
}

} // namespace foundation::network::fuzz
