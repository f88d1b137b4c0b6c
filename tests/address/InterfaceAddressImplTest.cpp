#include "address/InterfaceAddressImpl.hpp"

#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::network {
namespace {

    using namespace tests;
    namespace ip = boost::asio::ip;

    InterfaceAddressImpl withMask(const char* address, const char* mask)
    {
        return {ip::make_address(address), ip::make_address(mask)};
    }

    struct Row {
        const char* mask;
        unsigned short prefixLength;
    };

    // Every mask of version 4, by the names that RFC 4632, 3.1 gives.
    const Row masks4[] = {
        {"0.0.0.0", 0},          {"128.0.0.0", 1},        {"192.0.0.0", 2},
        {"224.0.0.0", 3},        {"240.0.0.0", 4},        {"248.0.0.0", 5},
        {"252.0.0.0", 6},        {"254.0.0.0", 7},        {"255.0.0.0", 8},
        {"255.128.0.0", 9},      {"255.192.0.0", 10},     {"255.224.0.0", 11},
        {"255.240.0.0", 12},     {"255.248.0.0", 13},     {"255.252.0.0", 14},
        {"255.254.0.0", 15},     {"255.255.0.0", 16},     {"255.255.128.0", 17},
        {"255.255.192.0", 18},   {"255.255.224.0", 19},   {"255.255.240.0", 20},
        {"255.255.248.0", 21},   {"255.255.252.0", 22},   {"255.255.254.0", 23},
        {"255.255.255.0", 24},   {"255.255.255.128", 25}, {"255.255.255.192", 26},
        {"255.255.255.224", 27}, {"255.255.255.240", 28}, {"255.255.255.248", 29},
        {"255.255.255.252", 30}, {"255.255.255.254", 31}, {"255.255.255.255", 32},
    };

    TEST(InterfaceAddressImpl, countsTheBitsOfAMask)
    {
        for (const Row& row : masks4) {
            SCOPED_TRACE(row.mask);
            const InterfaceAddressImpl impl = withMask("10.1.2.3", row.mask);
            EXPECT_EQ(impl.prefixLength, row.prefixLength);
            EXPECT_EQ(impl.text, "10.1.2.3/" + std::to_string(row.prefixLength));
            EXPECT_EQ(impl.address, ip::make_address("10.1.2.3"));
        }
    }

    // A byte that is no run of leading bits.
    TEST(InterfaceAddressImpl, refusesAMaskWithABrokenByte)
    {
        const Failure expected{typeid(boost::wrapexcept<std::out_of_range>),
                               "non-contiguous netmask"};
        for (const char* mask : {"1.0.0.0", "253.0.0.0", "255.1.0.0", "255.255.127.0",
                                 "255.255.255.253", "255.255.255.1", "127.255.255.255"}) {
            SCOPED_TRACE(mask);
            EXPECT_EQ(failureOf([&] { withMask("10.1.2.3", mask); }), expected);
        }
    }

    // Bits in a byte behind the end of the run.
    TEST(InterfaceAddressImpl, refusesAMaskWithAGap)
    {
        const Failure expected{typeid(boost::wrapexcept<std::invalid_argument>),
                               "non-contiguous netmask"};
        for (const char* mask : {"0.255.0.0", "0.0.0.1", "255.0.255.0", "254.128.0.0",
                                 "255.255.0.1", "255.255.254.255"}) {
            SCOPED_TRACE(mask);
            EXPECT_EQ(failureOf([&] { withMask("10.1.2.3", mask); }), expected);
        }
    }

    const Row masks6[] = {
        {"::", 0},
        {"8000::", 1},
        {"fe00::", 7},
        {"ff00::", 8},
        {"ffff:ffff:ffff:ffff::", 64},
        {"ffff:ffff:ffff:ffff:8000::", 65},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe", 127},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", 128},
        // Neither gaps nor broken bytes are refused: each byte adds its own run, or nothing.
        {"::ff", 8},
        {"ff00::ff00", 16},
        {"8080:8080::", 4},
        {"7f00::", 0},
        {"ff01:fd00::", 8},
        {"c0e0:f0f8:fcfe:100::", 2 + 3 + 4 + 5 + 6 + 7},
    };

    TEST(InterfaceAddressImpl, addsUpTheBytesOfAMaskOfVersion6)
    {
        for (const Row& row : masks6) {
            SCOPED_TRACE(row.mask);
            const InterfaceAddressImpl impl = withMask("2001:db8::1", row.mask);
            EXPECT_EQ(impl.prefixLength, row.prefixLength);
            EXPECT_EQ(impl.text, "2001:db8::1/" + std::to_string(row.prefixLength));
        }
    }

    TEST(InterfaceAddressImpl, refusesAMaskOfTheOtherVersion)
    {
        EXPECT_THROW(withMask("10.1.2.3", "ffff::"), ip::bad_address_cast);
        EXPECT_THROW(withMask("fe80::1", "255.0.0.0"), ip::bad_address_cast);
    }

    // Every single byte of a mask, against the list of those that are runs.
    TEST(InterfaceAddressImpl, takesNineValuesOfAByte)
    {
        const unsigned runs[] = {0, 128, 192, 224, 240, 248, 252, 254, 255};
        for (unsigned byte = 0; byte <= 255; ++byte) {
            SCOPED_TRACE(byte);
            const unsigned* const found = std::find(std::begin(runs), std::end(runs), byte);
            const bool isRun = found != std::end(runs);
            const std::string mask = std::to_string(byte) + ".0.0.0";
            EXPECT_EQ(failureOf([&] { withMask("10.1.2.3", mask.c_str()); }).has_value(), !isRun);
            const ip::address_v6 mask6({static_cast<unsigned char>(byte)});
            const InterfaceAddressImpl impl(ip::make_address("::1"), mask6);
            EXPECT_EQ(impl.prefixLength, isRun ? found - runs : 0);
        }
    }

} // namespace
} // namespace foundation::network
