#include "HeapMeter.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include <malloc.h>

// The names here are glibc's, and its headers name the parameters in a way that only it may.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)

// glibc's own allocator, under the names that it keeps for those who replace malloc. A malloc that
// the program defines takes the place of glibc's in all shared libraries too, so that a library
// written in C is counted like operator new, which calls malloc.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace benchmarks {
namespace {

    // Constant-initialised: malloc runs before any constructor of this program.
    constinit HeapUse use;

    void* taken(void* block) noexcept
    {
        if (block) {
            ++use.allocations;
            use.liveBytes += static_cast<std::int64_t>(malloc_usable_size(block));
        }
        return block;
    }

    void given(void* block) noexcept
    {
        if (block)
            use.liveBytes -= static_cast<std::int64_t>(malloc_usable_size(block));
    }

} // namespace

HeapUse heapUse() noexcept
{
    return use;
}

} // namespace benchmarks

extern "C" {

void* malloc(std::size_t size) noexcept
{
    return benchmarks::taken(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return benchmarks::taken(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept
{
    const std::size_t before = block ? malloc_usable_size(block) : 0;
    void* const moved = __libc_realloc(block, size);
    // Without a result the old block is still there, unless a size of 0 asked to free it.
    if (moved || size == 0)
        benchmarks::use.liveBytes -= static_cast<std::int64_t>(before);
    return benchmarks::taken(moved);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept
{
    return benchmarks::taken(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept
{
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0)
        return EINVAL;
    void* const got = memalign(alignment, size);
    if (!got)
        return ENOMEM;
    *block = got;
    return 0;
}

void free(void* block) noexcept
{
    benchmarks::given(block);
    __libc_free(block);
}

} // extern "C"

// NOLINTEND(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
