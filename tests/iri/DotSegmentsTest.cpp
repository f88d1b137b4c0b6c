#include "iri/DotSegments.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace foundation::network::iri {
namespace {

    struct Answer {
        const char* path;
        bool has;
    };
    constexpr Answer answers[] = {
        {".", true},
        {"..", true},
        {"./", true},
        {"/.", true},
        {"../", true},
        {"/..", true},
        {"/../", true},
        {"./a", true},
        {"../a", true},
        {"a/.", true},
        {"a/..", true},
        {"a/./b", true},
        {"a/../b", true},
        {"a/../", true},
        {"/../a", true},
        {"/./a", true},
        {".//", true},
        {"a/.//", true},
        {"a/././", true}, // the first "/./" has something behind it
        {"/././", true},
        {".a/./.", true},
        {"..../..", true},
        // a path that ends in "/./" and has no other dot segment
        {"/./", false},
        {"a/./", false},
        {"//./", false},
        {".../a/./", false},
        // dots that are no segment of their own
        {"", false},
        {"/", false},
        {"a", false},
        {"...", false},
        {".../a", false},
        {"a/...", false},
        {"a/.../b", false},
        {".a", false},
        {"..a", false},
        {"a.", false},
        {"a..", false},
        {"a./b", false},
        {"a../b", false},
        {"a/.b", false},
        {"a/..b", false},
        {"a/b./", false},
        {"/a.b/..c/d..", false},
        // escapes are not looked through
        {"%2E%2E/x", false},
        {"%2e", false},
        {"a/%2E%2E/b", false},
        {"a/.%2E", false},
        {"a/\uFF0E/b", false}, // FULLWIDTH FULL STOP
    };

    TEST(DotSegments, areFoundInAPath)
    {
        for (const Answer& row : answers) {
            SCOPED_TRACE(testing::PrintToString(std::string(row.path)));
            EXPECT_EQ(hasDotSegments(row.path), row.has);
        }
    }

    bool contains(std::string_view path, std::string_view text)
    {
        return path.find(text) != path.npos;
    }

    // Said without looking at segments.
    bool hasDotSegmentsNaively(std::string_view path)
    {
        const bool isOne = path == "." || path == ".." || path == "./" || path == "/.";
        const bool begins = path.starts_with("./") || path.starts_with("../");
        const bool holds =
            contains(path, "/../") || contains(path.substr(0, path.size() - 1), "/./");
        const bool ends = path.ends_with("/.") || path.ends_with("/..");
        return isOne || begins || holds || ends;
    }

    TEST(DotSegments, areFoundInAllShortPaths)
    {
        constexpr std::string_view ALPHABET = "./a";
        int found = 0;
        for (std::size_t length = 0, count = 1; length <= 9; ++length, count *= ALPHABET.size()) {
            for (std::size_t number = 0; number < count; ++number) {
                std::string path;
                for (std::size_t rest = number; path.size() < length; rest /= ALPHABET.size())
                    path += ALPHABET[rest % ALPHABET.size()];
                ASSERT_EQ(hasDotSegments(path), hasDotSegmentsNaively(path))
                    << testing::PrintToString(path);
                const std::string longer = "/a./..a" + path; // reaches over several steps
                ASSERT_EQ(hasDotSegments(longer), hasDotSegmentsNaively(longer))
                    << testing::PrintToString(longer);
                found += hasDotSegments(path) ? 1 : 0;
            }
        }
        EXPECT_GT(found, 1000);
    }

} // namespace
} // namespace foundation::network::iri
