#include "adapter/Listing.hpp"

#include "adapter/InventedAdapters.hpp"
#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "platform/SystemAnswers.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

namespace foundation::network::adapter {
namespace {

    using namespace tests;
    // The function of the same name as this namespace.
    platform::AdapterRecord ordinary(std::uint32_t index, std::u16string name,
                                     Addresses addresses = {})
    {
        return tests::adapter(index, std::move(name), std::move(addresses));
    }

    using Texts = std::vector<std::string>;

    Texts identifiersOf(const Listing::Range& range)
    {
        Texts identifiers;
        for (const NetworkInterface& one : range)
            identifiers.push_back(one.getIdentifier());
        return identifiers;
    }

    NetworkInterface only(const platform::AdapterRecord& record)
    {
        const Listing::Range range = Listing::all(readerOf({record}));
        EXPECT_EQ(range.size(), 1U);
        return *range.begin();
    }

    template <class Range>
    Texts textsOf(const Range& range)
    {
        Texts texts;
        for (const auto& one : range)
            texts.push_back(one.toString());
        return texts;
    }

    struct Identified {
        std::uint32_t index, ipv6Index;
        const char* identifier;
    };

    const Identified identified[] = {
        {1, 1, "1"},
        {7, 0, "7"},
        {7, 8, "7"},
        {0, 9, "9"}, // an interface with IPv6 alone
        {0, 0, "0"},
        {10, 0, "10"},
        {4294967295, 0, "4294967295"},
        {0, 4294967295, "4294967295"},
    };

    TEST(Listing, identifiesAnAdapterByItsIndex)
    {
        for (const Identified& row : identified) {
            SCOPED_TRACE(row.identifier);
            platform::AdapterRecord record = ordinary(row.index, u"eth0");
            record.ipv6Index = row.ipv6Index;
            EXPECT_EQ(only(record).getIdentifier(), row.identifier);
            EXPECT_EQ(only(record).getFriendlyName(), u"eth0");
            // Without a name the identifier stands for it.
            record.friendlyName.clear();
            const std::string digits = row.identifier;
            EXPECT_EQ(only(record).getFriendlyName(), std::u16string(digits.begin(), digits.end()));
            EXPECT_EQ(only(record).getIdentifier(), row.identifier);
        }
    }

    TEST(Listing, keepsNamesAndDescriptions)
    {
        platform::AdapterRecord record = ordinary(3, u"\u00E9th\u20AC\U0001F600");
        record.description = u"to \u03C3 and back";
        EXPECT_EQ(only(record).getFriendlyName(), u"\u00E9th\u20AC\U0001F600");
        EXPECT_EQ(only(record).getDescription(), u"to \u03C3 and back");
        record.description.clear();
        EXPECT_EQ(only(record).getDescription(), u"");
    }

    TEST(Listing, keepsHardwareAddressesOfEveryLength)
    {
        for (const std::size_t length : {0U, 1U, 6U, 8U, 16U, 20U, 32U, 255U}) {
            SCOPED_TRACE(length);
            platform::AdapterRecord record = ordinary(3, u"eth0");
            for (std::size_t i = 0; i < length; ++i)
                record.physicalAddress.push_back(static_cast<unsigned char>(i));
            const NetworkInterface adapter = only(record);
            EXPECT_EQ(adapter.getHardwareAddress().bytes(), record.physicalAddress);
            EXPECT_EQ(adapter.getHardwareAddress().toString().empty(), length == 0);

            // A loopback adapter has none, whatever the system says.
            record.loopback = true;
            EXPECT_TRUE(only(record).getHardwareAddress().empty());
            EXPECT_EQ(only(record).getHardwareAddress().toString(), "");
        }
    }

    TEST(Listing, keepsTheFlagsApart)
    {
        for (unsigned flags = 0; flags < 8; ++flags) {
            SCOPED_TRACE(flags);
            platform::AdapterRecord record = ordinary(3, u"eth0");
            record.up = (flags & 1U) != 0;
            record.loopback = (flags & 2U) != 0;
            record.multicast = (flags & 4U) != 0;
            const NetworkInterface adapter = only(record);
            EXPECT_EQ(adapter.isUp(), record.up);
            EXPECT_EQ(adapter.isLoopback(), record.loopback);
            EXPECT_EQ(adapter.supportsMulticast(), record.multicast);
        }
    }

    TEST(Listing, keepsAddressesInOrder)
    {
        const NetworkInterface adapter = only(ordinary(
            3, u"eth0",
            {unicast("fe80::1", 64), unicast("192.168.1.5", 24), unicast("::", 0),
             unicast("192.168.1.5", 24), unicast("10.0.0.1", 32), unicast("2001:db8::1", 128)}));
        const Texts texts = {"fe80::1/64",     "192.168.1.5/24", "::/0",
                             "192.168.1.5/24", "10.0.0.1/32",    "2001:db8::1/128"};
        EXPECT_EQ(textsOf(adapter.getInterfaceAddresses()), texts);

        const auto inner = adapter.getInetAddresses();
        EXPECT_EQ(textsOf(inner), (Texts{"fe80::1", "192.168.1.5", "::", "192.168.1.5", "10.0.0.1",
                                         "2001:db8::1"}));
        // A link-local address shows no scope.
        EXPECT_TRUE(inner.begin()->isLinkLocal());
    }

    TEST(Listing, leavesOtherFamiliesOut)
    {
        platform::UnicastRecord other = unicast("10.0.0.9", 200);
        other.family = platform::Family::OTHER;
        const auto adapter = ordinary(
            3, u"eth0", {other, unicast("10.0.0.1", 8), other, unicast("::1", 128), other});
        EXPECT_EQ(textsOf(only(adapter).getInterfaceAddresses()), (Texts{"10.0.0.1/8", "::1/128"}));
        // Such addresses alone make no adapter active.
        EXPECT_TRUE(Listing::active(readerOf({ordinary(3, u"eth0", {other})})).empty());
    }

    TEST(Listing, refusesPrefixesThatAreTooLarge)
    {
        const Failure expected{typeid(boost::wrapexcept<std::out_of_range>),
                               "prefix length too large"};
        for (const auto& bad :
             {unicast("10.0.0.1", 33), unicast("10.0.0.1", 255), unicast("::1", 129)}) {
            // One record in the midst of good ones ends the whole listing.
            Records records = {ordinary(1, u"a", {unicast("10.0.0.1", 8)}),
                               ordinary(2, u"b", {bad}), ordinary(3, u"c")};
            EXPECT_EQ(failureOf([&] { Listing::all(readerOf(records)); }), expected);
            EXPECT_EQ(failureOf([&] { Listing::active(readerOf(records)); }), expected);
            // Also where the adapter itself would be left out.
            records[1].up = false;
            EXPECT_EQ(failureOf([&] { Listing::active(readerOf(records)); }), expected);
        }
    }

    TEST(Listing, filtersAndKeepsTheOrder)
    {
        Records records = {
            ordinary(9, u"i", {unicast("10.0.0.9", 8)}),
            ordinary(2, u"without addresses"),
            loopback(1, {unicast("127.0.0.1", 8)}),
            ordinary(7, u"down", {unicast("10.0.0.7", 8)}),
            ordinary(7, u"down and without addresses"),
            loopback(5, {}),
            ordinary(3, u"i", {unicast("fe80::1", 64)}),
            loopback(6, {unicast("127.0.0.1", 8)}),
        };
        records[3].up = records[4].up = records[7].up = false;
        EXPECT_EQ(identifiersOf(Listing::all(readerOf(records))),
                  (Texts{"9", "2", "1", "7", "7", "5", "3", "6"}));
        EXPECT_EQ(identifiersOf(Listing::active(readerOf(records))), (Texts{"9", "1", "3"}));
    }

    TEST(Listing, ofAnEmptyTableIsEmpty)
    {
        EXPECT_TRUE(Listing::all(readerOf({})).empty());
        EXPECT_TRUE(Listing::active(readerOf({})).empty());
    }

    TEST(Listing, reportsTheFailureOfTheSystem)
    {
        namespace handlers = core::except::tests;
        for (const int code : systemFailures()) {
            SCOPED_TRACE(code);
            const std::error_code systemFailure(code, std::system_category());
            const std::string text =
                "Call to GetAdaptersAddresses failed.: " + systemFailure.message();
            // What the reader had found by then is of no account.
            const TableReader reader = [&](Records& table) {
                table = {ordinary(1, u"eth0", {unicast("10.0.0.1", 8)})};
                return systemFailure;
            };
            for (const auto list : {&Listing::all, &Listing::active}) {
                EXPECT_EQ(
                    failureOf([&] { list(reader); }),
                    (Failure{typeid(core::except::AnonymousInternalException<std::system_error>),
                             text}));
                EXPECT_EQ(handlers::handlersThatTake([&] { list(reader); }),
                          handlers::namesForSystemError());
                try {
                    list(reader);
                } catch (const std::system_error& failure) {
                    EXPECT_EQ(failure.code(), systemFailure);
                }
            }
        }
    }

    TEST(Listing, asksTheSystemOnceEachTime)
    {
        int count = 0;
        const TableReader reader = [&](Records& table) {
            EXPECT_TRUE(table.empty());
            ++count;
            table = {ordinary(static_cast<std::uint32_t>(count), u"eth0")};
            return std::error_code();
        };
        EXPECT_EQ(identifiersOf(Listing::all(reader)), Texts{"1"});
        EXPECT_EQ(identifiersOf(Listing::all(reader)), Texts{"2"});
        EXPECT_TRUE(Listing::active(reader).empty());
        EXPECT_EQ(count, 3);
    }

    TEST(NetworkInterface, copiesAndMovesAreTheSameAdapter)
    {
        const NetworkInterface first = only(ordinary(3, u"eth0", {unicast("10.0.0.1", 8)}));
        const NetworkInterface second = only(ordinary(4, u"eth1"));
        NetworkInterface copy(first);
        NetworkInterface moved(std::move(copy));
        EXPECT_EQ(moved.getFriendlyName(), u"eth0");
        copy = second; // what was moved from may be assigned to
        EXPECT_EQ(copy.getFriendlyName(), u"eth1");
        NetworkInterface other(std::move(copy));
        copy = std::move(other);
        EXPECT_EQ(copy.getFriendlyName(), u"eth1");
        EXPECT_EQ(first.getFriendlyName(), u"eth0");
        EXPECT_EQ(textsOf(moved.getInterfaceAddresses()), Texts{"10.0.0.1/8"});
    }

    TEST(NetworkInterface, outlivesItsListAndItsReader)
    {
        std::vector<NetworkInterface> kept;
        {
            const Records records = {ordinary(3, u"eth0", {unicast("10.0.0.1", 8)})};
            kept.push_back(*Listing::all(readerOf(records)).begin());
        }
        EXPECT_EQ(kept[0].getIdentifier(), "3");
        EXPECT_EQ(textsOf(kept[0].getInetAddresses()), Texts{"10.0.0.1"});
    }

    static_assert(std::is_nothrow_copy_constructible_v<NetworkInterface>);
    static_assert(std::is_nothrow_copy_assignable_v<NetworkInterface>);
    static_assert(std::is_nothrow_move_constructible_v<NetworkInterface>);
    static_assert(std::is_nothrow_move_assignable_v<NetworkInterface>);
    static_assert(!std::is_default_constructible_v<NetworkInterface>);
    static_assert(!std::is_polymorphic_v<NetworkInterface>);

    template <class T>
    concept Comparable = requires(const T& left, const T& right)
    {
        left == right;
    }
    || requires(const T& left, const T& right)
    {
        left < right;
    };
    static_assert(!Comparable<NetworkInterface>);

} // namespace
} // namespace foundation::network::adapter
