#pragma once

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <gtest/gtest.h>

#include <string>

namespace foundation::network::tests {

/// What both formatting libraries give. @p format takes format options and a value.
template <class Format>
void checkFormatting(Format format)
{
    const IRI iri(std::string("http://é.example/%41"));
    const InetAddress address(std::string("2001:DB8::0:1"));

    EXPECT_EQ(format("{}", iri), "http://é.example/%41");
    EXPECT_EQ(format("{:*<24}", iri), "http://é.example/%41****");
    EXPECT_EQ(format("{:.4}", iri), "http");
    EXPECT_EQ(format("{}", IRI()), "");
    EXPECT_EQ(format("{:>15}", address), "    2001:db8::1");
    EXPECT_EQ(format("{}", InterfaceAddress(address, 64)), "2001:db8::1/64");
    EXPECT_EQ(format("[{:^9}]", HardwareAddress({0x02, 0xAB})), "[  02:ab  ]");
}

} // namespace foundation::network::tests
