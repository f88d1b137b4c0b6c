#include "text/Fnv1a.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace foundation::network::text {
namespace {

    // FNV-1a as its authors give it: one byte after the other.
    std::uint64_t naiveHash(const std::u32string& text)
    {
        std::uint64_t hash = 14695981039346656037U;
        for (const char32_t unit : text) {
            for (unsigned shift = 0; shift < 32; shift += 8) {
                hash ^= (unit >> shift) % 256;
                hash *= 1099511628211U;
            }
        }
        return hash;
    }

    struct Vector {
        std::u32string text;
        std::uint64_t hash;
    };

    // Published results for 64-bit FNV-1a whose input has a multiple of four bytes. A value that is
    // no code point is a value all the same.
    const Vector published[] = {
        {U"", 0xcbf29ce484222325U},
        {{0x626F6F66}, 0xdd120e790c2512afU}, // "foob"
        {{0x006F6F66}, 0xdd1270790c25b935U}, // "foo" and a zero byte
    };

    TEST(Fnv1a, givesThePublishedResults)
    {
        for (const Vector& row : published) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            EXPECT_EQ(fnv1a(row.text), row.hash);
            EXPECT_EQ(naiveHash(row.text), row.hash);
        }
    }

    TEST(Fnv1a, isThatOfFourBytesForEveryCodePoint)
    {
        for (char32_t c = 0; c <= 0x110000; ++c)
            ASSERT_EQ(fnv1a({&c, 1}), naiveHash(std::u32string(1, c)))
                << static_cast<std::uint32_t>(c);
    }

    TEST(Fnv1a, isThatOfFourBytesForTextsOfManyKinds)
    {
        constexpr char32_t limits[] = {0,     'a',    0x7F,    0xFF,      0x100,
                                       0x1FF, 0xFFFF, 0x10000, 0xFFFFFFFF};
        constexpr std::uint32_t SEED = 20240611;
        std::mt19937 random(SEED);
        for (int i = 0; i < 20000; ++i) {
            std::u32string text(random() % 20, U'\0');
            for (char32_t& c : text)
                c = random() % 2 == 0 ? limits[random() % std::size(limits)]
                                      : static_cast<char32_t>(random());
            ASSERT_EQ(fnv1a(text), naiveHash(text))
                << "seed " << SEED << ", text " << i << ": " << testing::PrintToString(text);
        }
    }

    // ASCII is hashed by other arithmetic, several characters at a time.
    TEST(Fnv1a, isThatOfFourBytesForTextsThatAreMostlyAscii)
    {
        constexpr std::uint32_t SEED = 20240614;
        std::mt19937 random(SEED);
        for (int i = 0; i < 50000; ++i) {
            std::u32string text(random() % 80, U'\0');
            const std::size_t others = random() % 4; // of so many in 32
            for (char32_t& c : text)
                c = random() % 32 < others ? random() % 0x400 : random() % 0x80;
            ASSERT_EQ(fnv1a(text), naiveHash(text))
                << "seed " << SEED << ", text " << i << ": " << testing::PrintToString(text);
        }
    }

    TEST(Fnv1a, dependsOnTheOrderAndOnZeros)
    {
        using namespace std::string_literals;
        EXPECT_NE(fnv1a(U"ab"), fnv1a(U"ba"));
        EXPECT_NE(fnv1a(U"a"), fnv1a(U"a\0"s));
    }

} // namespace
} // namespace foundation::network::text
