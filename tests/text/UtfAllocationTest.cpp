#include "text/Utf.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::atomic<int> allocations{0};

} // namespace

// Counts what the whole program allocates.
void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace foundation::network::text {
namespace {

    template <class Text>
    int allocationsOfReading(const Text& text)
    {
        const int before = allocations;
        const std::u32string read = toUtf32(text);
        const int after = allocations;
        EXPECT_FALSE(read.empty());
        return after - before;
    }

    TEST(UtfAllocation, readingTakesTheMemoryForItsResultAtOnce)
    {
        std::string utf8;
        std::u16string utf16;
        for (int i = 0; i < 1000; ++i) {
            utf8 += "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
            utf16 += u"a\u00E9\u20AC\U0001F600";
        }
        EXPECT_EQ(allocationsOfReading(utf8), 1);
        EXPECT_EQ(allocationsOfReading(utf16), 1);
        EXPECT_EQ(allocationsOfReading(std::string(100000, 'a')), 1);
        EXPECT_EQ(allocationsOfReading(std::u16string(100000, u'a')), 1);
    }

} // namespace
} // namespace foundation::network::text
