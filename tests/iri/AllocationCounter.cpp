#include "iri/AllocationCounter.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> count{0};
std::atomic<std::size_t> inUse{0};
std::atomic<std::size_t> peak{0};

// Each piece of memory is preceded by its size, in a room that keeps it aligned.
constexpr std::size_t room = alignof(std::max_align_t);
static_assert(room >= sizeof(std::size_t));

void* take(std::size_t size)
{
    void* const block = std::malloc(room + size);
    if (block == nullptr)
        throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    ++count;
    const std::size_t now = inUse += size;
    std::size_t most = peak;
    while (most < now && !peak.compare_exchange_weak(most, now)) {}
    return static_cast<char*>(block) + room;
}

void giveBack(void* memory) noexcept
{
    if (memory == nullptr)
        return;
    void* const block = static_cast<char*>(memory) - room;
    inUse -= *static_cast<std::size_t*>(block);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size)
{
    return take(size);
}

void* operator new[](std::size_t size)
{
    return take(size);
}

void operator delete(void* memory) noexcept
{
    giveBack(memory);
}

void operator delete[](void* memory) noexcept
{
    giveBack(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    giveBack(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    giveBack(memory);
}

namespace foundation::network::tests {

std::size_t allocationCount() noexcept
{
    return count;
}

std::size_t bytesInUse() noexcept
{
    return inUse;
}

std::size_t peakBytes() noexcept
{
    return peak;
}

void forgetPeak() noexcept
{
    peak = inUse.load();
}

} // namespace foundation::network::tests
