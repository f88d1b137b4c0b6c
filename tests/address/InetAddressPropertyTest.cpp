#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include "address/NaiveAddress.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace foundation::network {
namespace {

    using namespace tests;

    // Bytes from the borders of the classes, and zeros in runs, beside arbitrary ones.
    rc::Gen<Bytes> addressBytes(std::size_t count)
    {
        const auto byte = rc::gen::weightedOneOf<unsigned char>(
            {{4, rc::gen::just<unsigned char>(0)},
             {2, rc::gen::element<unsigned char>(0x01, 0x7E, 0x7F, 0x80, 0xA9, 0xBF, 0xC0, 0xDF,
                                                 0xE0, 0xEF, 0xF0, 0xFD, 0xFE, 0xFF)},
             {3, rc::gen::arbitrary<unsigned char>()}});
        return rc::gen::container<Bytes>(count, byte);
    }

    rc::Gen<Bytes> addressBytes()
    {
        return rc::gen::oneOf(addressBytes(4), addressBytes(16));
    }

    template <std::size_t COUNT>
    std::array<unsigned char, COUNT> arrayOf(const Bytes& bytes)
    {
        std::array<unsigned char, COUNT> array{};
        std::copy_n(bytes.begin(), COUNT, array.begin());
        return array;
    }

    RC_GTEST_PROP(InetAddress, generatedBytesAndTextsComeBack, ())
    {
        const Bytes bytes = *addressBytes();
        const InetAddress address(bytes);
        RC_ASSERT(address.getVersion() == (bytes.size() == 4 ? 4U : 6U));
        RC_ASSERT(address.bytes() == bytes);
        RC_ASSERT(address.toString() == naiveText(bytes));
        RC_ASSERT(address.getHostAddress() == address.toString());

        const InetAddress again(address.toString());
        RC_ASSERT(again.bytes() == bytes);
        RC_ASSERT(again.toString() == address.toString());

        const InetAddress fromArray =
            bytes.size() == 4 ? InetAddress(arrayOf<4>(bytes)) : InetAddress(arrayOf<16>(bytes));
        RC_ASSERT(fromArray.bytes() == bytes);
    }

    RC_GTEST_PROP(InetAddress, generatedBytesAreOfTheClassesThatTheyShow, ())
    {
        const Bytes bytes = *addressBytes();
        const InetAddress address(bytes);
        RC_ASSERT(address.isLoopback() == naiveIsLoopback(bytes));
        RC_ASSERT(address.isLinkLocal() == naiveIsLinkLocal(bytes));
        RC_ASSERT(address.isMulticast() == naiveIsMulticast(bytes));
    }

    RC_GTEST_PROP(InterfaceAddress, generatedAddressesStayWholeUnderEveryPrefix, ())
    {
        const Bytes bytes = *addressBytes();
        const unsigned limit = bytes.size() == 4 ? 32 : 128;
        const auto prefix = static_cast<unsigned short>(*rc::gen::inRange(0U, 2 * limit));
        const auto make = [&] { return InterfaceAddress(InetAddress(bytes), prefix); };
        if (prefix > limit) {
            RC_ASSERT(failureOf(make)
                      == (Failure{typeid(boost::wrapexcept<std::out_of_range>),
                                  "prefix length too large"}));
            return;
        }
        RC_ASSERT(make().toString() == naiveText(bytes) + "/" + std::to_string(prefix));
        RC_ASSERT(make().prefixLength() == prefix);
        RC_ASSERT(make().getInetAddress().bytes() == bytes);
    }

    // Every pair of leading bytes, on which the classes depend but for ::1.
    TEST(InetAddress, everyBeginningIsOfTheClassesThatItShows)
    {
        for (const std::size_t count : {4U, 16U}) {
            for (unsigned beginning = 0; beginning <= 0xFFFF; ++beginning) {
                Bytes bytes(count);
                bytes[0] = static_cast<unsigned char>(beginning / 256);
                bytes[1] = static_cast<unsigned char>(beginning % 256);
                const InetAddress address(bytes);
                ASSERT_EQ(address.isLoopback(), naiveIsLoopback(bytes)) << naiveText(bytes);
                ASSERT_EQ(address.isLinkLocal(), naiveIsLinkLocal(bytes)) << naiveText(bytes);
                ASSERT_EQ(address.isMulticast(), naiveIsMulticast(bytes)) << naiveText(bytes);
            }
        }
    }

} // namespace
} // namespace foundation::network
