#pragma once

#include <cstdint>

namespace benchmarks {

/// What this program has asked of malloc and its kin so far, libraries included.
struct HeapUse {
    std::uint64_t allocations = 0; ///< calls that gave memory; a realloc is one
    std::int64_t liveBytes = 0;    ///< usable bytes of all blocks that are not freed yet

    friend HeapUse operator-(const HeapUse& a, const HeapUse& b)
    {
        return {a.allocations - b.allocations, a.liveBytes - b.liveBytes};
    }
    HeapUse& operator+=(const HeapUse& other)
    {
        allocations += other.allocations;
        liveBytes += other.liveBytes;
        return *this;
    }
};

/// The counts up to now. Meant for programs of one thread.
HeapUse heapUse() noexcept;

} // namespace benchmarks
