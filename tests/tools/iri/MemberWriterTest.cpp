#include "MemberWriter.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using tool::MemberWriter;
using tool::RowFormat;

constexpr std::array<std::string_view, 4> COLUMNS{"a", "b", "c", "d"};

std::string written(RowFormat format)
{
    MemberWriter writer(format, COLUMNS);
    std::string result;
    writer.appendHeader(result);
    writer.begin();
    writer.add("b", "x\ty\\");
    writer.addNumber("a", 7);
    writer.beginList("d");
    writer.addElement("p\n");
    writer.addElement(std::uint32_t{8});
    writer.endList();
    writer.end(result);
    writer.begin();
    writer.addBool("a", true);
    writer.addNull("b");
    writer.addUnlessEmpty("c", "");
    writer.beginList("d");
    writer.endList();
    writer.end(result);
    return result;
}

TEST(MemberWriter, WritesColumns)
{
    EXPECT_EQ(written(RowFormat::Tsv), "a\tb\tc\td\n"
                                       "7\tx\\ty\\\\\t\\N\tp\\n,8\n"
                                       "true\t\\N\t\\N\t\n");
}

TEST(MemberWriter, WritesObjects)
{
    EXPECT_EQ(written(RowFormat::Json), R"({"b":"x\ty\\","a":7,"d":["p\n",8]})"
                                        "\n"
                                        R"({"a":true,"b":null,"c":null,"d":[]})"
                                        "\n");
}

TEST(MemberWriter, LosesNoMemberWithoutAWord)
{
    MemberWriter writer(RowFormat::Tsv, COLUMNS);
    writer.begin();
    EXPECT_THROW(writer.add("e", "x"), std::logic_error);
}

} // namespace
