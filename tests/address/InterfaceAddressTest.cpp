#include <foundation/network/InterfaceAddress.hpp>

#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

namespace foundation::network {
namespace {

    using namespace tests;
    using namespace std::string_literals;

    InterfaceAddress interfaceAddress(const char* address, unsigned short prefixLength)
    {
        return {InetAddress(std::string(address)), prefixLength};
    }

    struct Row {
        const char* address;
        unsigned short prefixLength;
        const char* text; // nullptr: refused
    };

    const Row rows[] = {
        {"0.0.0.0", 0, "0.0.0.0/0"},
        {"10.1.2.3", 0, "10.1.2.3/0"},
        {"10.1.2.3", 8, "10.1.2.3/8"}, // the host's bits stay
        {"192.168.1.5", 24, "192.168.1.5/24"},
        {"10.1.2.3", 31, "10.1.2.3/31"},
        {"10.1.2.3", 32, "10.1.2.3/32"},
        {"10.1.2.3", 33, nullptr},
        {"10.1.2.3", 128, nullptr},
        {"10.1.2.3", 256, nullptr}, // not taken for 0
        {"10.1.2.3", 65535, nullptr},
        {"::", 0, "::/0"},
        {"fe80::1", 64, "fe80::1/64"},
        {"2001:db8::1:2", 33, "2001:db8::1:2/33"},
        {"fe80::1", 127, "fe80::1/127"},
        {"fe80::1", 128, "fe80::1/128"},
        {"fe80::1", 129, nullptr},
        {"fe80::1", 65535, nullptr},
        {"::ffff:10.0.0.1", 96, "::ffff:10.0.0.1/96"},
        {"fe80::1%2000000001", 64, "fe80::1%2000000001/64"}, // the scope before the slash
    };

    TEST(InterfaceAddress, showsAddressAndPrefix)
    {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.address) + " " + std::to_string(row.prefixLength));
            const auto make = [&] { return interfaceAddress(row.address, row.prefixLength); };
            if (row.text == nullptr) {
                EXPECT_EQ(failureOf(make), (Failure{typeid(boost::wrapexcept<std::out_of_range>),
                                                    "prefix length too large"}));
                continue;
            }
            const InterfaceAddress address = make();
            EXPECT_EQ(address.toString(), row.text);
            EXPECT_EQ(address.prefixLength(), row.prefixLength);
            EXPECT_EQ(address.getInetAddress().toString(), row.address);
        }
    }

    TEST(InterfaceAddress, withoutAnythingIsZero)
    {
        const InterfaceAddress address;
        EXPECT_EQ(address.toString(), "0.0.0.0/0");
        EXPECT_EQ(address.prefixLength(), 0);
        EXPECT_EQ(address.getInetAddress().getVersion(), 4U);
        EXPECT_EQ(address.getInetAddress().toString(), "0.0.0.0");
    }

    TEST(InterfaceAddress, failureIsOutsideTheFamily)
    {
        namespace handlers = core::except::tests;
        const auto fail = [] { interfaceAddress("10.1.2.3", 33); };
        EXPECT_EQ(handlers::handlersThatTake(fail), handlers::namesForOutOfRange());
    }

    TEST(InterfaceAddress, copiesAndMovesAreTheSameAddress)
    {
        const InterfaceAddress original = interfaceAddress("10.1.2.3", 8);
        InterfaceAddress copy(original);
        InterfaceAddress moved(std::move(copy));
        EXPECT_EQ(moved.toString(), "10.1.2.3/8");
        copy = original; // what was moved from may be assigned to
        EXPECT_EQ(copy.toString(), "10.1.2.3/8");
        InterfaceAddress other(std::move(copy));
        copy = std::move(other);
        EXPECT_EQ(copy.toString(), "10.1.2.3/8");
        copy = interfaceAddress("::1", 128);
        EXPECT_EQ(copy.toString(), "::1/128");
        EXPECT_EQ(original.toString(), "10.1.2.3/8");
        EXPECT_EQ(moved.toString(), "10.1.2.3/8");
    }

    TEST(InterfaceAddress, outlivesWhatItWasMadeOf)
    {
        InterfaceAddress copy;
        InetAddress inner;
        {
            const InterfaceAddress original = interfaceAddress("fe80::1%2000000001", 64);
            copy = original;
            inner = original.getInetAddress();
        }
        EXPECT_EQ(copy.toString(), "fe80::1%2000000001/64");
        EXPECT_EQ(inner.toString(), "fe80::1%2000000001");
    }

    static_assert(std::is_nothrow_copy_constructible_v<InterfaceAddress>);
    static_assert(std::is_nothrow_copy_assignable_v<InterfaceAddress>);
    static_assert(std::is_nothrow_move_constructible_v<InterfaceAddress>);
    static_assert(std::is_nothrow_move_assignable_v<InterfaceAddress>);
    static_assert(!std::is_polymorphic_v<InterfaceAddress>);

    template <class T>
    concept Comparable = requires(const T& left, const T& right)
    {
        left == right;
    }
    || requires(const T& left, const T& right)
    {
        left < right;
    };
    static_assert(!Comparable<InterfaceAddress>);

} // namespace
} // namespace foundation::network
