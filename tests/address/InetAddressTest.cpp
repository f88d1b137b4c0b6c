#include <foundation/network/InetAddress.hpp>

#include "address/NaiveAddress.hpp"
#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "platform/SystemAnswers.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>

namespace foundation::network {
namespace {

    using namespace tests;
    using namespace std::string_literals;

    Failure badAddress(const std::string& text)
    {
        return {typeid(core::except::AnonymousInternalException<std::invalid_argument>), text};
    }

    struct Known {
        const char* text;
        const char* printed;
        unsigned version;
        Bytes bytes;
        bool loopback, linkLocal, multicast;
    };

    const Known knownAddresses[] = {
        {"0.0.0.0", "0.0.0.0", 4, {0, 0, 0, 0}, false, false, false},
        {"1.2.3.4", "1.2.3.4", 4, {1, 2, 3, 4}, false, false, false},
        {"126.255.255.255", "126.255.255.255", 4, {126, 255, 255, 255}, false, false, false},
        {"127.0.0.0", "127.0.0.0", 4, {127, 0, 0, 0}, true, false, false},
        {"127.0.0.1", "127.0.0.1", 4, {127, 0, 0, 1}, true, false, false},
        {"127.255.255.254", "127.255.255.254", 4, {127, 255, 255, 254}, true, false, false},
        {"128.0.0.1", "128.0.0.1", 4, {128, 0, 0, 1}, false, false, false},
        {"169.253.0.1", "169.253.0.1", 4, {169, 253, 0, 1}, false, false, false},
        {"169.253.255.255", "169.253.255.255", 4, {169, 253, 255, 255}, false, false, false},
        {"169.254.0.0", "169.254.0.0", 4, {169, 254, 0, 0}, false, true, false},
        {"169.254.0.1", "169.254.0.1", 4, {169, 254, 0, 1}, false, true, false},
        {"169.254.255.255", "169.254.255.255", 4, {169, 254, 255, 255}, false, true, false},
        {"169.255.0.1", "169.255.0.1", 4, {169, 255, 0, 1}, false, false, false},
        {"168.254.0.1", "168.254.0.1", 4, {168, 254, 0, 1}, false, false, false},
        {"223.255.255.255", "223.255.255.255", 4, {223, 255, 255, 255}, false, false, false},
        {"224.0.0.1", "224.0.0.1", 4, {224, 0, 0, 1}, false, false, true},
        {"239.255.255.255", "239.255.255.255", 4, {239, 255, 255, 255}, false, false, true},
        {"240.0.0.1", "240.0.0.1", 4, {240, 0, 0, 1}, false, false, false},
        {"255.255.255.255", "255.255.255.255", 4, {255, 255, 255, 255}, false, false, false},
        {"::", "::", 6, Bytes(16), false, false, false},
        {"::1", "::1", 6, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}, true, false, false},
        {"::2", "::2", 6, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2}, false, false, false},
        {"1::1", "1::1", 6, {0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}, false, false, false},
        // Mapped addresses are of version 6 in every respect.
        {"::ffff:127.0.0.1",
         "::ffff:127.0.0.1",
         6,
         {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 127, 0, 0, 1},
         false,
         false,
         false},
        {"::ffff:a9fe:1",
         "::ffff:169.254.0.1",
         6,
         {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 169, 254, 0, 1},
         false,
         false,
         false},
        {"::ffff:224.0.0.1",
         "::ffff:224.0.0.1",
         6,
         {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 224, 0, 0, 1},
         false,
         false,
         false},
        {"fe7f:ffff::",
         "fe7f:ffff::",
         6,
         {0xFE, 0x7F, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
         false,
         false,
         false},
        {"fe80::1",
         "fe80::1",
         6,
         {0xFE, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         false,
         true,
         false},
        {"febf::1",
         "febf::1",
         6,
         {0xFE, 0xBF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         false,
         true,
         false},
        {"fec0::1",
         "fec0::1",
         6,
         {0xFE, 0xC0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         false,
         false,
         false},
        {"ff00::",
         "ff00::",
         6,
         {0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
         false,
         false,
         true},
        {"ff02::1",
         "ff02::1",
         6,
         {0xFF, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         false,
         false,
         true},
        {"feff::1",
         "feff::1",
         6,
         {0xFE, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1},
         false,
         false,
         false},
        // RFC 5952, 4: lower case, no leading zeros, the first of the longest runs of zeros.
        {"2001:0DB8:0000:0000:0001:0000:0000:0001",
         "2001:db8::1:0:0:1",
         6,
         {0x20, 1, 0x0D, 0xB8, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1},
         false,
         false,
         false},
        {"1:0:2:3:4:5:6:7",
         "1:0:2:3:4:5:6:7",
         6,
         {0, 1, 0, 0, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0, 7},
         false,
         false,
         false},
        {"64:ff9b::192.0.2.33",
         "64:ff9b::c000:221",
         6,
         {0, 0x64, 0xFF, 0x9B, 0, 0, 0, 0, 0, 0, 0, 0, 192, 0, 2, 33},
         false,
         false,
         false},
    };

    TEST(InetAddress, isMadeOfAText)
    {
        for (const Known& row : knownAddresses) {
            SCOPED_TRACE(row.text);
            const InetAddress address{std::string(row.text)};
            EXPECT_EQ(address.getVersion(), row.version);
            EXPECT_EQ(address.bytes(), row.bytes);
            EXPECT_EQ(address.toString(), row.printed);
            EXPECT_EQ(address.getHostAddress(), row.printed);
            EXPECT_EQ(address.isLoopback(), row.loopback);
            EXPECT_EQ(address.isLinkLocal(), row.linkLocal);
            EXPECT_EQ(address.isMulticast(), row.multicast);
        }
    }

    // The classification of the generated tests says the same of the same addresses.
    TEST(NaiveAddress, agreesWithTheTable)
    {
        for (const Known& row : knownAddresses) {
            SCOPED_TRACE(row.text);
            EXPECT_EQ(naiveText(row.bytes), row.printed);
            EXPECT_EQ(naiveIsLoopback(row.bytes), row.loopback);
            EXPECT_EQ(naiveIsLinkLocal(row.bytes), row.linkLocal);
            EXPECT_EQ(naiveIsMulticast(row.bytes), row.multicast);
        }
    }

    TEST(InetAddress, isMadeOfBytes)
    {
        for (const Known& row : knownAddresses) {
            SCOPED_TRACE(row.text);
            const InetAddress address(row.bytes);
            EXPECT_EQ(address.getVersion(), row.version);
            EXPECT_EQ(address.bytes(), row.bytes);
            EXPECT_EQ(address.toString(), row.printed);
        }
    }

    TEST(InetAddress, isMadeOfArrays)
    {
        const InetAddress four(std::array<unsigned char, 4>{192, 168, 1, 5});
        EXPECT_EQ(four.getVersion(), 4U);
        EXPECT_EQ(four.toString(), "192.168.1.5");
        EXPECT_EQ(four.bytes(), (Bytes{192, 168, 1, 5}));

        const InetAddress six(
            std::array<unsigned char, 16>{0xFE, 0x80, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8});
        EXPECT_EQ(six.getVersion(), 6U);
        EXPECT_EQ(six.toString(), "fe80::102:304:506:708");
        EXPECT_EQ(six.bytes(), (Bytes{0xFE, 0x80, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8}));
    }

    TEST(InetAddress, withoutAnythingIsZeroOfVersion4)
    {
        for (const InetAddress& address : {InetAddress(), InetAddress(Bytes())}) {
            EXPECT_EQ(address.getVersion(), 4U);
            EXPECT_EQ(address.toString(), "0.0.0.0");
            EXPECT_EQ(address.bytes(), Bytes(4));
            EXPECT_FALSE(address.isLoopback());
            EXPECT_FALSE(address.isLinkLocal());
            EXPECT_FALSE(address.isMulticast());
        }
    }

    TEST(InetAddress, refusesOtherNumbersOfBytes)
    {
        for (std::size_t count = 0; count <= 40; ++count) {
            SCOPED_TRACE(count);
            const auto make = [&] { InetAddress address{Bytes(count)}; };
            if (count == 0 || count == 4 || count == 16)
                EXPECT_EQ(failureOf(make), std::nullopt);
            else
                EXPECT_EQ(failureOf(make),
                          badAddress("Can not create InetAddress from " + std::to_string(count)
                                     + " elements. Vector must have 0, 4 or 16 "
                                       "elements."));
        }
        EXPECT_EQ(failureOf([] { InetAddress address{Bytes(1'000'000)}; }),
                  badAddress("Can not create InetAddress from 1000000 elements. Vector must have "
                             "0, 4 or 16 elements."));
    }

    struct Refused {
        std::string text;
        const char* why;
    };

    const Refused refusedTexts[] = {
        {"", "only no bytes give 0.0.0.0"},
        {" ", "blank"},
        {"127", "one part"},
        {"127.1", "two parts"},
        {"127.0.1", "three parts"},
        {"1.2.3.4.5", "five parts"},
        {"1.2.3.", "an empty part"},
        {"1.2.3.4.", "a dot behind"},
        {".1.2.3.4", "a dot in front"},
        {"1..3.4", "an empty part between"},
        {"2130706433", "the whole address as one number"},
        {"0x7f.0.0.1", "hexadecimal"},
        {"0x7f000001", "hexadecimal in one part"},
        {"01.2.3.4", "octal"},
        {"1.2.3.04", "octal behind"},
        {"1.2.3.256", "too large"},
        {"1.2.3.1000", "too long"},
        {"-1.2.3.4", "a sign"},
        {"+1.2.3.4", "a sign"},
        {"1.2.3.4 ", "a blank behind"},
        {" 1.2.3.4", "a blank in front"},
        {"1.2.3.4/24", "a prefix"},
        {"1.2.3.4:80", "a port"},
        {"1.2.3.4:", "a port without a number"},
        {"1.2.3.4:65536", "a port too large"},
        {"127.1:80", "two parts and a port"},
        {"01.2.3.4:80", "octal, and a port"},
        {"1.2.3.a", "a letter"},
        {"\xD9\xA1.2.3.4", "an Arabic-Indic digit"},
        {"localhost", "a name"},
        {":", "half a gap"},
        {":::", "a gap and a half"},
        {"1::2::3", "two gaps"},
        {"1:2:3:4:5:6:7", "seven groups"},
        {"1:2:3:4:5:6:7:8:9", "nine groups"},
        {"1:2:3:4:5:6:7:8::", "a gap for nothing"},
        {"12345::", "five digits"},
        {"g::", "no digit"},
        {"1:", "a colon behind"},
        {":1", "a colon in front"},
        {"[::1]", "brackets"},
        {"[::1]:80", "a port"},
        {"::1/128", "a prefix"},
        {"::1 ", "a blank behind"},
        {"::127.1", "two decimal parts"},
        {"::1.2.3.256", "a decimal part too large"},
        {"1.2.3.4::", "decimal parts in front"},
        {"fe80:%5", "half a gap and a scope"},
        {"1.2.3.4%5", "a scope with version 4"},
        {"\0"s, "a NUL ends the text"},
        {"\0127.0.0.1"s, "a NUL ends the text"},
        {std::string(1'000'000, '1'), "long"},
        {std::string(1'000'000, ':'), "long"},
    };

    TEST(InetAddress, refusesATextThatIsNoAddress)
    {
        for (const Refused& row : refusedTexts) {
            SCOPED_TRACE(row.text.substr(0, 50) + ": " + row.why);
            const auto own = ownAddressTexts();
            if (const auto taken = own.find(row.text); taken != own.end()) {
                EXPECT_EQ(InetAddress(row.text).toString(), taken->second);
                continue;
            }
            EXPECT_EQ(failureOf([&] { InetAddress address(row.text); }),
                      badAddress(refusalOf(row.text)));
        }
    }

    TEST(InetAddress, failureIsTakenByEachOfItsHandlers)
    {
        namespace handlers = core::except::tests;
        const auto bytes = [] { InetAddress address(Bytes(5)); };
        const auto text = [] { InetAddress address("127.1"s); };
        EXPECT_EQ(handlers::handlersThatTake(bytes), handlers::namesForInvalidArgument());
        EXPECT_EQ(handlers::handlersThatTake(text), handlers::namesForInvalidArgument());
    }

    template <class Handler, class Operation>
    std::string textTakenAs(Operation operation)
    {
        try {
            operation();
        } catch (const Handler& failure) {
            return failure.what();
        }
        return "nothing";
    }

    TEST(InetAddress, failureAnswersTheSameTextToEachHandler)
    {
        const std::string text = "Can not create InetAddress from 6 elements. Vector must have 0, "
                                 "4 or 16 elements.";
        const auto fail = [] { InetAddress address(Bytes(6)); };
        EXPECT_EQ(textTakenAs<std::invalid_argument>(fail), text);
        EXPECT_EQ(textTakenAs<std::logic_error>(fail), text);
        EXPECT_EQ(textTakenAs<std::exception>(fail), text);
        EXPECT_EQ(textTakenAs<core::except::IInternalException>(fail), text);
        EXPECT_EQ(textTakenAs<core::except::IException>(fail), text);
    }

    TEST(InetAddress, textEndsAtItsFirstNul)
    {
        EXPECT_EQ(InetAddress("127.0.0.1\0x"s).toString(), "127.0.0.1");
        EXPECT_EQ(InetAddress("::1\0.1"s).toString(), "::1");
    }

    struct Scoped {
        const char* text;
        const char* printed;
    };

    // No interface has these numbers: one that exists would show its name.
    const Scoped scopedAddresses[] = {
        {"fe80::1%2000000001", "fe80::1%2000000001"},
        {"FE80:0::1%2000000001", "fe80::1%2000000001"},
        {"ff02::1%2000000001", "ff02::1%2000000001"},
        {"2001:db8::1%7", "2001:db8::1%7"}, // not of a link, so that its scope is no interface
        {"::1%7", "::1%7"},
        {"fe80::1%0", "fe80::1"},
    };

    TEST(InetAddress, keepsItsScopeInTheTextAlone)
    {
        for (const Scoped& row : scopedAddresses) {
            SCOPED_TRACE(row.text);
            const InetAddress address{std::string(row.text)};
            EXPECT_EQ(address.getVersion(), 6U);
            EXPECT_EQ(address.toString(), row.printed);
            EXPECT_EQ(address.getHostAddress(), row.printed);
            EXPECT_EQ(address.bytes().size(), 16U);
            // Without its scope the address has the same bytes.
            const std::string text = row.text;
            EXPECT_EQ(address.bytes(), InetAddress(text.substr(0, text.find('%'))).bytes());
            EXPECT_EQ(InetAddress(address.toString()).toString(), row.printed);
            EXPECT_EQ(InetAddress(address.bytes()).toString().find('%'), std::string::npos);
        }
        EXPECT_TRUE(InetAddress("::1%7"s).isLoopback());
        EXPECT_TRUE(InetAddress("fe80::1%2000000001"s).isLinkLocal());
        EXPECT_TRUE(InetAddress("ff02::1%2000000001"s).isMulticast());
    }

    TEST(InetAddress, takesTheScopesThatTheSystemKnows)
    {
        for (const auto& row : scopedAddressTexts()) {
            const std::string& text = row.first;
            const std::string& printed = row.second;
            SCOPED_TRACE(text);
            if (printed.empty()) {
                EXPECT_EQ(failureOf([&] { InetAddress address(text); }),
                          badAddress(refusalOf(text)));
                continue;
            }
            const InetAddress address(text);
            EXPECT_EQ(address.toString(), printed);
            EXPECT_EQ(InetAddress(printed).toString(), printed);
        }
    }

    TEST(InetAddress, copiesAndMovesAreTheSameAddress)
    {
        const InetAddress original("192.0.2.1"s);
        InetAddress copy(original);
        EXPECT_EQ(copy.toString(), "192.0.2.1");
        InetAddress moved(std::move(copy));
        EXPECT_EQ(moved.toString(), "192.0.2.1");

        // What was moved from may be assigned to, both ways.
        copy = original;
        EXPECT_EQ(copy.toString(), "192.0.2.1");
        InetAddress other(std::move(copy));
        copy = std::move(other);
        EXPECT_EQ(copy.toString(), "192.0.2.1");

        copy = InetAddress("::1"s);
        EXPECT_EQ(copy.getVersion(), 6U);
        EXPECT_EQ(moved.toString(), "192.0.2.1");
        EXPECT_EQ(original.toString(), "192.0.2.1");

        const InetAddress& same = moved;
        moved = same;
        EXPECT_EQ(moved.toString(), "192.0.2.1");
    }

    TEST(InetAddress, outlivesWhatItWasCopiedFrom)
    {
        InetAddress copy;
        {
            const InetAddress original("fe80::1%2000000001"s);
            copy = original;
        }
        EXPECT_EQ(copy.toString(), "fe80::1%2000000001");
    }

    static_assert(std::is_nothrow_move_constructible_v<InetAddress>);
    static_assert(std::is_nothrow_move_assignable_v<InetAddress>);
    static_assert(!std::has_virtual_destructor_v<InetAddress>);
    static_assert(!std::is_polymorphic_v<InetAddress>);
    // A text or some bytes are no address before somebody says so.
    static_assert(!std::is_convertible_v<std::string, InetAddress>);
    static_assert(!std::is_convertible_v<Bytes, InetAddress>);
    static_assert(!std::is_convertible_v<std::array<unsigned char, 4>, InetAddress>);
    static_assert(!std::is_constructible_v<InetAddress, std::array<unsigned char, 5>>);

    template <class T>
    concept Comparable = requires(const T& left, const T& right)
    {
        left == right;
    }
    || requires(const T& left, const T& right)
    {
        left < right;
    };
    static_assert(!Comparable<InetAddress>);

} // namespace
} // namespace foundation::network
