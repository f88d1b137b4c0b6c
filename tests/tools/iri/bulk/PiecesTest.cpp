#include "bulk/Pieces.hpp"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using tool::bulk::BadChunkHeader;
using tool::bulk::Pieces;
using tool::bulk::Source;

/// A file that goes with the test.
class File {
public:
    explicit File(std::string_view content)
    {
        std::ofstream file(path_, std::ios::binary);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        EXPECT_TRUE(file.flush());
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { std::remove(path_.c_str()); }

    const std::string& path() const noexcept { return path_; }

private:
    /// Of which no other program that runs at the same time thinks.
    static std::string freshName()
    {
        static const std::string ours = std::to_string(std::random_device()());
        static int count = 0;
        return testing::TempDir() + "zkflnetwork-pieces-" + ours + '-' + std::to_string(++count);
    }

    std::string path_ = freshName();
};

/// All records of an input. Each piece but the last must end where a record does.
std::vector<std::string> records(std::string_view content, char separator, bool hasChunkHeaders)
{
    const File file(content);
    Source source(file.path());
    Pieces pieces(source, separator, hasChunkHeaders);
    std::vector<std::string> result;
    std::string piece;
    bool isWhole = true;
    while (pieces.next(piece)) {
        EXPECT_TRUE(isWhole);
        EXPECT_FALSE(piece.empty());
        isWhole = piece.ends_with(separator);
        std::string_view rest = piece;
        while (const auto record = tool::bulk::takeRecord(rest, separator))
            result.emplace_back(*record);
    }
    EXPECT_FALSE(pieces.next(piece));
    return result;
}

using List = std::vector<std::string>;

TEST(Pieces, AreWholeRecords)
{
    using namespace std::string_literals;
    const struct {
        std::string content;
        List expected;
    } CASES[] = {
        {"", {}},
        {"\n", {""}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\n\nb", {"a", "", "b"}},
        {"a\r\n\0\xFF\n"s, {"a\r", "\0\xFF"s}},
        {"\xEF\xBB\xBF", {}},
        {"\xEF\xBB\xBF\n", {""}},
        {"\xEF\xBB\xBF\xEF\xBB\xBF\na", {"\xEF\xBB\xBF", "a"}},
        {"a\n\xEF\xBB\xBF\n", {"a", "\xEF\xBB\xBF"}},
    };
    for (const auto& [content, expected] : CASES)
        EXPECT_EQ(records(content, '\n', false), expected) << content;
    EXPECT_EQ(records("a\n\0\0\xEF\xBB\xBF"s, '\0', false), (List{"a\n", "", "\xEF\xBB\xBF"}));
    EXPECT_EQ(records("\xEF\xBB\xBF\0"s, '\0', false), (List{"\xEF\xBB\xBF"}));
}

TEST(Pieces, HoldRecordsOfAnyLength)
{
    const bool holds = rc::check("records come as they were written", [] {
        const auto lengths = *rc::gen::container<std::vector<std::size_t>>(
            rc::gen::weightedOneOf<std::size_t>({{8, rc::gen::inRange<std::size_t>(0, 20)},
                                                 {1, rc::gen::inRange<std::size_t>(0, 600000)}}));
        std::string content;
        List expected;
        for (const std::size_t length : lengths) {
            expected.emplace_back(length, static_cast<char>('a' + length % 26));
            content.append(expected.back()).push_back('\n');
        }
        RC_ASSERT(records(content, '\n', false) == expected);
    });
    EXPECT_TRUE(holds);
}

TEST(Pieces, StandInChunksWhoseHeadersAreTakenOff)
{
    const struct {
        std::string content;
        List expected;
    } CASES[] = {
        {"", {}},
        {"0\n", {}},
        {"1\na\n", {"a"}},
        {"1\na", {"a"}},
        {"2\na\n\n1\nb\n", {"a", "", "b"}},
        {"0\n0\n1\n1\n0\n", {"1"}},
        {"2\r\na\r\nb\r\n", {"a\r", "b\r"}},
        {"007\n1\n2\n3\n4\n5\n6\n7\n", {"1", "2", "3", "4", "5", "6", "7"}},
    };
    for (const auto& [content, expected] : CASES)
        EXPECT_EQ(records(content, '\n', true), expected) << content;

    std::string long_ = "3\n";
    for (int i = 0; i < 3; ++i)
        long_.append(400000, 'x').push_back('\n');
    EXPECT_EQ(records(long_ + long_, '\n', true), List(6, std::string(400000, 'x')));
}

TEST(Pieces, RefuseChunksThatAreNotAsAnnounced)
{
    const struct {
        std::string content;
        std::string_view why;
    } CASES[] = {
        {"a\n", "not the number of the records of a chunk: a"},
        {"\n", "not the number of the records of a chunk: "},
        {"-1\n", "not the number of the records of a chunk: -1"},
        {"1 \n", "not the number of the records of a chunk: 1 "},
        {"1\na\nb\n", "not the number of the records of a chunk: b"},
        {"18446744073709551616\n",
         "not the number of the records of a chunk: 18446744073709551616"},
        {"2\na\n", "the input ends within a chunk; records missing: 1"},
        {"3", "the input ends within a chunk; records missing: 3"},
    };
    for (const auto& [content, why] : CASES) {
        try {
            records(content, '\n', true);
            ADD_FAILURE() << content;
        } catch (const BadChunkHeader& failure) {
            EXPECT_EQ(failure.what(), why);
        }
    }
}

TEST(Pieces, LetTheFirstRecordBeTakenOff)
{
    const struct {
        std::string content;
        std::optional<std::string> first;
        List rest;
    } CASES[] = {
        {"", std::nullopt, {}},           {"a", "a", {}},
        {"a\nb\n", "a", {"b"}},           {"\n\n", "", {""}},
        {"\xEF\xBB\xBFh\nb", "h", {"b"}},
    };
    for (const auto& [content, first, rest] : CASES) {
        const File file(content);
        Source source(file.path());
        Pieces pieces(source, '\n', false);
        EXPECT_EQ(pieces.takeFirst(), first) << content;
        List found;
        for (std::string piece; pieces.next(piece);) {
            std::string_view view = piece;
            while (const auto record = tool::bulk::takeRecord(view, '\n'))
                found.emplace_back(*record);
        }
        EXPECT_EQ(found, rest) << content;
    }
}

} // namespace
