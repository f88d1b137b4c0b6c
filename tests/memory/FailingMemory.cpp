#include "memory/FailingMemory.hpp"

#include <unicode/uclean.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {

using foundation::network::tests::Shortage;

std::atomic<std::size_t> pieces{0};

// Of this thread. Zero: nothing is to fail.
thread_local std::size_t numberToFail = 0;
thread_local std::size_t requests = 0;
thread_local Shortage shortage = Shortage::OfOne;

bool isToFail() noexcept
{
    if (numberToFail == 0)
        return false;
    ++requests;
    return requests == numberToFail || (requests > numberToFail && shortage == Shortage::FromOneOn);
}

void* take(std::size_t size) noexcept
{
    if (isToFail())
        return nullptr;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr)
        ++pieces;
    return memory;
}

void giveBack(void* memory) noexcept
{
    if (memory == nullptr)
        return;
    --pieces;
    std::free(memory);
}

void* takeOrThrow(std::size_t size)
{
    if (void* const memory = take(size))
        return memory;
    throw std::bad_alloc();
}

extern "C" void* takeForIcu(const void*, std::size_t size)
{
    return take(size);
}

extern "C" void* takeAgainForIcu(const void*, void* memory, std::size_t size)
{
    if (memory == nullptr)
        return take(size);
    return isToFail() ? nullptr : std::realloc(memory, size);
}

extern "C" void giveBackForIcu(const void*, void* memory)
{
    giveBack(memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return takeOrThrow(size);
}

void* operator new[](std::size_t size)
{
    return takeOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return take(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
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

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    giveBack(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    giveBack(memory);
}

namespace foundation::network::tests {

FailingMemory::FailingMemory(std::size_t number, Shortage kind) noexcept
{
    requests = 0;
    shortage = kind;
    numberToFail = number;
}

FailingMemory::~FailingMemory()
{
    numberToFail = 0;
}

bool FailingMemory::hasFailed() noexcept
{
    return requests >= numberToFail;
}

std::size_t piecesInUse() noexcept
{
    return pieces;
}

void takeOverMemoryOfIcu()
{
    UErrorCode code = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, takeForIcu, takeAgainForIcu, giveBackForIcu, &code);
    if (U_FAILURE(code))
        throw std::runtime_error(u_errorName(code));
}

} // namespace foundation::network::tests
