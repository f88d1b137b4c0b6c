#include "iri/DotSegments.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace foundation::network::iri {
namespace {

    struct Answer {
        const char32_t* path;
        bool has;
    };
    constexpr Answer answers[] = {
        {U".", true},
        {U"..", true},
        {U"./", true},
        {U"/.", true},
        {U"../", true},
        {U"/..", true},
        {U"/../", true},
        {U"./a", true},
        {U"../a", true},
        {U"a/.", true},
        {U"a/..", true},
        {U"a/./b", true},
        {U"a/../b", true},
        {U"a/../", true},
        {U"/../a", true},
        {U"/./a", true},
        {U".//", true},
        {U"a/.//", true},
        {U"a/././", true}, // the first "/./" has something behind it
        {U"/././", true},
        {U".a/./.", true},
        {U"..../..", true},
        // a path that ends in "/./" and has no other dot segment
        {U"/./", false},
        {U"a/./", false},
        {U"//./", false},
        {U".../a/./", false},
        // dots that are no segment of their own
        {U"", false},
        {U"/", false},
        {U"a", false},
        {U"...", false},
        {U".../a", false},
        {U"a/...", false},
        {U"a/.../b", false},
        {U".a", false},
        {U"..a", false},
        {U"a.", false},
        {U"a..", false},
        {U"a./b", false},
        {U"a../b", false},
        {U"a/.b", false},
        {U"a/..b", false},
        {U"a/b./", false},
        {U"/a.b/..c/d..", false},
        // escapes are not looked through
        {U"%2E%2E/x", false},
        {U"%2e", false},
        {U"a/%2E%2E/b", false},
        {U"a/.%2E", false},
        {U"a/\uFF0E/b", false}, // FULLWIDTH FULL STOP
    };

    TEST(DotSegments, areFoundInAPath)
    {
        for (const Answer& row : answers) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(row.path)));
            EXPECT_EQ(hasDotSegments(row.path), row.has);
        }
    }

    bool contains(std::u32string_view path, std::u32string_view text)
    {
        return path.find(text) != path.npos;
    }

    // Said without looking at segments.
    bool hasDotSegmentsNaively(std::u32string_view path)
    {
        const bool isOne = path == U"." || path == U".." || path == U"./" || path == U"/.";
        const bool begins = path.starts_with(U"./") || path.starts_with(U"../");
        const bool holds =
            contains(path, U"/../") || contains(path.substr(0, path.size() - 1), U"/./");
        const bool ends = path.ends_with(U"/.") || path.ends_with(U"/..");
        return isOne || begins || holds || ends;
    }

    TEST(DotSegments, areFoundInAllShortPaths)
    {
        constexpr std::u32string_view ALPHABET = U"./a";
        int found = 0;
        for (std::size_t length = 0, count = 1; length <= 9; ++length, count *= ALPHABET.size()) {
            for (std::size_t number = 0; number < count; ++number) {
                std::u32string path;
                for (std::size_t rest = number; path.size() < length; rest /= ALPHABET.size())
                    path += ALPHABET[rest % ALPHABET.size()];
                ASSERT_EQ(hasDotSegments(path), hasDotSegmentsNaively(path))
                    << testing::PrintToString(path);
                const std::u32string longer = U"/a./..a" + path; // reaches over several steps
                ASSERT_EQ(hasDotSegments(longer), hasDotSegmentsNaively(longer))
                    << testing::PrintToString(longer);
                found += hasDotSegments(path) ? 1 : 0;
            }
        }
        EXPECT_GT(found, 1000);
    }

} // namespace
} // namespace foundation::network::iri
