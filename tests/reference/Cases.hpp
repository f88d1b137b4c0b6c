#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>

namespace foundation::network::tests {

/// How many cases a test generates for each thing that it compares: the number that the environment
/// variable ZKFLNETWORK_TEST_CASES holds, and otherwise what an ordinary run has time for.
inline std::size_t testCases()
{
    const char* const number =
        std::getenv("ZKFLNETWORK_TEST_CASES"); // NOLINT(concurrency-mt-unsafe)
    return number ? std::stoul(number) : 100'000;
}

} // namespace foundation::network::tests
