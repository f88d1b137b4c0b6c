#pragma once

#include <cstddef>

/// What a program has taken by `operator new`. Whoever links AllocationCounter.cpp replaces the
/// operator for the whole process, the shared library included.
namespace foundation::network::tests {

/// How often memory was taken since the program began.
std::size_t allocationCount() noexcept;

/// The bytes that are in use.
std::size_t bytesInUse() noexcept;

/// The most bytes that were in use since `forgetPeak` was last called.
std::size_t peakBytes() noexcept;
void forgetPeak() noexcept;

} // namespace foundation::network::tests
