#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>

namespace foundation::network::tests {

/// How many cases a test generates for each thing that it compares: what an ordinary run has time
/// for, times the environment variable ZKFLNETWORK_TEST_FACTOR.
inline std::size_t testCases()
{
    const char* const factor =
        std::getenv("ZKFLNETWORK_TEST_FACTOR"); // NOLINT(concurrency-mt-unsafe)
    return static_cast<std::size_t>(100'000 * (factor ? std::stod(factor) : 1.0));
}

} // namespace foundation::network::tests
