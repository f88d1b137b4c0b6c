#include <foundation/network/HardwareAddress.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace foundation::network {
namespace {

    using Bytes = std::vector<unsigned char>;

    struct Row {
        Bytes bytes;
        const char* text;
    };

    const Row rows[] = {
        {{}, ""},
        {{0}, "00"},
        {{0x0A}, "0a"},
        {{0xFF}, "ff"},
        {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}, "00:1a:2b:3c:4d:5e"},
        {{0, 1, 2, 3, 4, 5, 6, 7}, "00:01:02:03:04:05:06:07"},
        {{0x0F, 0xF0, 0xAB, 0xCD, 0xEF, 0x99, 0x10, 0x01}, "0f:f0:ab:cd:ef:99:10:01"},
        {Bytes(20, 0x80), "80:80:80:80:80:80:80:80:80:80:80:80:80:80:80:80:80:80:80:80"},
    };

    TEST(HardwareAddress, showsItsBytes)
    {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.text);
            const HardwareAddress address(row.bytes);
            EXPECT_EQ(address.toString(), row.text);
            EXPECT_EQ(address.bytes(), row.bytes);
            EXPECT_EQ(Bytes(address.begin(), address.end()), row.bytes);
            EXPECT_EQ(address.size(), row.bytes.size());
            EXPECT_EQ(address.empty(), row.bytes.empty());
        }
    }

    TEST(HardwareAddress, showsEveryByteInTwoLowerCaseDigits)
    {
        const std::string digits = "0123456789abcdef";
        for (unsigned byte = 0; byte <= 255; ++byte) {
            const auto value = static_cast<unsigned char>(byte);
            const std::string expected = {digits[byte / 16], digits[byte % 16]};
            ASSERT_EQ(HardwareAddress({value}).toString(), expected);
            ASSERT_EQ(HardwareAddress({value, 1}).toString(), expected + ":01");
        }
    }

    TEST(HardwareAddress, hasNoLimitOfLength)
    {
        const HardwareAddress address(Bytes(100'000, 0x0A));
        EXPECT_EQ(address.size(), 100'000U);
        const std::string text = address.toString();
        EXPECT_EQ(text.size(), 3U * 100'000 - 1);
        EXPECT_EQ(std::count(text.begin(), text.end(), ':'), 99'999);
    }

    TEST(HardwareAddress, withoutAnythingIsEmpty)
    {
        const HardwareAddress address;
        EXPECT_TRUE(address.empty());
        EXPECT_EQ(address.size(), 0U);
        EXPECT_EQ(address.toString(), "");
        EXPECT_EQ(address.bytes(), Bytes());
    }

    TEST(HardwareAddress, isEmptyAfterBeingMovedFrom)
    {
        const HardwareAddress original(Bytes{1, 2, 3});
        HardwareAddress source(original);
        HardwareAddress moved(std::move(source));
        EXPECT_TRUE(source.empty());
        EXPECT_EQ(source.toString(), "");
        EXPECT_EQ(moved.toString(), "01:02:03");

        source = original;
        EXPECT_EQ(source.toString(), "01:02:03");
        moved = HardwareAddress(Bytes{9});
        EXPECT_EQ(moved.toString(), "09");
        moved = std::move(source);
        EXPECT_TRUE(source.empty());
        EXPECT_EQ(moved.toString(), "01:02:03");
        EXPECT_EQ(original.toString(), "01:02:03");
    }

    TEST(HardwareAddress, answersCopiesOfItsBytes)
    {
        const HardwareAddress address(Bytes{1, 2});
        Bytes bytes = address.bytes();
        bytes[0] = 9;
        EXPECT_EQ(address.toString(), "01:02");
    }

    static_assert(
        std::is_base_of_v<detail::ImmutableIterableRange<unsigned char>, HardwareAddress>);
    static_assert(std::is_nothrow_move_constructible_v<HardwareAddress>);
    static_assert(!std::is_polymorphic_v<HardwareAddress>);
    static_assert(!std::is_convertible_v<Bytes, HardwareAddress>);

} // namespace
} // namespace foundation::network
