// The name of the machine, its adapters and the name service are invented: this program has its own
// platform.

#include "adapter/LocalHost.hpp"

#include "adapter/InventedAdapters.hpp"
#include "address/InventedNameService.hpp"
#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "platform/HostName.hpp"
#include "platform/SystemAnswers.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    struct Machine {
        std::u16string name = u"box";
        std::error_code nameFailure;
        tests::Records adapters;
        std::error_code adaptersFailure;
        int listings = 0;
    };

    Machine machine;

} // namespace

std::error_code platform::readHostName(std::u16string& name)
{
    name = machine.name;
    return machine.nameFailure;
}

std::error_code platform::readAdapterTable(std::vector<AdapterRecord>& table)
{
    ++machine.listings;
    table = machine.adapters;
    return machine.adaptersFailure;
}

namespace {

    using namespace tests;
    using tests::adapter;
    using Texts = std::vector<std::string>;
    using SystemFailure = core::except::AnonymousInternalException<std::system_error>;

    struct Row {
        const char* what;
        Records adapters;
        std::optional<std::string> address; // nothing: none was found
    };

    const platform::AdapterRecord lo = loopback(1, {unicast("127.0.0.1", 8), unicast("::1", 128)});

    // What `findReachableAddress` finds among adapters that are up and have an address.
    const Row rows[] = {
        {"no adapter at all", {}, std::nullopt},
        {"nothing but loopback", {lo}, std::nullopt},
        {"an address of a loopback adapter that others could reach",
         {loopback(1, {unicast("10.0.0.5", 8), unicast("fe80::1", 64)})},
         std::nullopt},
        {"one address", {lo, adapter(2, u"eth0", {unicast("10.0.0.5", 8)})}, "10.0.0.5"},
        {"a link-local one behind it",
         {lo, adapter(2, u"eth0", {unicast("10.0.0.5", 8), unicast("fe80::1", 64)})},
         "10.0.0.5"},
        {"a link-local one in front of it",
         {lo, adapter(2, u"eth0", {unicast("fe80::1", 64), unicast("10.0.0.5", 8)})},
         "10.0.0.5"},
        {"a link-local one alone", {lo, adapter(2, u"eth0", {unicast("fe80::1", 64)})}, "fe80::1"},
        {"the first of two link-local ones",
         {adapter(2, u"eth0", {unicast("169.254.0.1", 16), unicast("fe80::1", 64)}),
          adapter(3, u"eth1", {unicast("fe80::2", 64)})},
         "169.254.0.1"},
        {"link-local first, on another adapter better",
         {adapter(2, u"eth0", {unicast("fe80::1", 64)}), lo,
          adapter(3, u"eth1", {unicast("fe80::2", 64), unicast("2001:db8::5", 64)})},
         "2001:db8::5"},
        {"the first of two good ones",
         {adapter(2, u"eth0", {unicast("2001:db8::5", 64), unicast("10.0.0.5", 8)}),
          adapter(3, u"eth1", {unicast("10.0.0.6", 8)})},
         "2001:db8::5"},
        // The adapter is what counts, not the address.
        {"a loopback address on another adapter",
         {adapter(2, u"dummy0", {unicast("127.0.0.53", 8)})},
         "127.0.0.53"},
    };

    TEST(LocalHost, findsAnAddressThatOthersCanReach)
    {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.what);
            const auto found = network::adapter::findReachableAddress(
                network::adapter::Listing::active(readerOf(row.adapters)));
            ASSERT_EQ(found.has_value(), row.address.has_value());
            EXPECT_EQ(found ? found->toString() : "", row.address.value_or(""));
        }
    }

    class GetLocalHost : public testing::Test {
    protected:
        GetLocalHost()
        {
            nameService() = {};
            machine = {};
        }
    };

    // Where the name stands for a loopback or link-local address, the adapters are searched.
    TEST_F(GetLocalHost, givesABetterAddressThanThatOfTheName)
    {
        for (const char* candidate : {"127.0.0.1", "127.0.1.1", "::1", "169.254.7.7", "fe80::7"}) {
            nameService().addresses["box"] = {candidate, "192.0.2.99"};
            for (const Row& row : rows) {
                SCOPED_TRACE(std::string(candidate) + ", " + row.what);
                machine.adapters = row.adapters;
                machine.listings = 0;
                const InetAddress address = InetAddress::getLocalHost();
                EXPECT_EQ(address.toString(), row.address.value_or(candidate));
                EXPECT_EQ(machine.listings, 1);
                nameService().questions.clear();
                EXPECT_EQ(address.getHostName(), "box");
                EXPECT_EQ(nameService().questions, Texts());
            }
        }
    }

    TEST_F(GetLocalHost, keepsAnAddressOfTheNameThatOthersCanReach)
    {
        machine.adapters = {adapter(2, u"eth0", {unicast("10.0.0.5", 8)})};
        for (const char* candidate :
             {"192.0.2.1", "2001:db8::1", "0.0.0.0", "224.0.0.1", "::ffff:127.0.0.1", "fec0::1"}) {
            SCOPED_TRACE(candidate);
            nameService().addresses["box"] = {candidate, "127.0.0.1"};
            const InetAddress address = InetAddress::getLocalHost();
            EXPECT_EQ(address.toString(), candidate);
            EXPECT_EQ(address.getHostName(), "box");
        }
        EXPECT_EQ(machine.listings, 0);
    }

    TEST_F(GetLocalHost, passesAdaptersByThatAreNotActive)
    {
        nameService().addresses["box"] = {"127.0.0.1"};
        machine.adapters = {adapter(2, u"down", {unicast("10.0.0.2", 8)}), adapter(3, u"bare"),
                            adapter(4, u"eth0", {unicast("10.0.0.4", 8)})};
        machine.adapters[0].up = false;
        EXPECT_EQ(InetAddress::getLocalHost().toString(), "10.0.0.4");
        machine.adapters.pop_back();
        EXPECT_EQ(InetAddress::getLocalHost().toString(), "127.0.0.1");
    }

    TEST_F(GetLocalHost, keepsTheScopeOfTheNamesAddressWhereNothingBetterIsFound)
    {
        nameService().addresses["box"] = {"fe80::7%2000000001"};
        EXPECT_EQ(InetAddress::getLocalHost().toString(), "fe80::7%2000000001");
    }

    TEST_F(GetLocalHost, failsAsItsStepsDo)
    {
        namespace handlers = core::except::tests;
        const auto failure = [] { return failureOf([] { InetAddress::getLocalHost(); }); };

        machine.nameFailure = {systemFailures().front(), std::system_category()};
        EXPECT_EQ(failure(), (Failure{typeid(SystemFailure), "Call to GetComputerName failed.: "
                                                                 + machine.nameFailure.message()}));
        machine.nameFailure = {};

        // The name is not known.
        EXPECT_EQ(failure(), (Failure{typeid(SystemFailure), nameServiceFailures().front().text}));
        nameService().forwardFailure = temporaryFailure().answer;
        EXPECT_EQ(failure(), (Failure{typeid(SystemFailure), temporaryFailure().text}));
        nameService().forwardFailure = 0;

        machine.adaptersFailure = {systemFailures().back(), std::system_category()};
        nameService().addresses["box"] = {"192.0.2.1"};
        EXPECT_EQ(failure(), std::nullopt); // the adapters are not asked
        nameService().addresses["box"] = {"127.0.0.1"};
        EXPECT_EQ(failure(),
                  (Failure{typeid(SystemFailure), "Call to GetAdaptersAddresses failed.: "
                                                      + machine.adaptersFailure.message()}));
        EXPECT_EQ(handlers::handlersThatTake([] { InetAddress::getLocalHost(); }),
                  handlers::namesForSystemError());
    }

    struct Named {
        const char16_t* name;
        const char* ascii;
    };

    const Named named[] = {
        {u"box", "box"},
        {u"BOX", "box"},
        {u"", ""},
        {u"b\u00FCcher", "xn--bcher-kva"},
        {u"stra\u00DFe", "xn--strae-oqa"},
        {u"\u4F8B\u3048", "xn--r8jz45g"},
        {u"a_b", "a_b"},
        {u"a\uFFFD", "a?"}, // what could not be read is seen
    };

    TEST_F(GetLocalHost, looksTheAsciiFormOfTheNameUp)
    {
        for (const Named& row : named) {
            SCOPED_TRACE(row.ascii);
            machine.name = row.name;
            EXPECT_EQ(getLocalHostName(), row.ascii);
            if (machine.name.empty()) {
                EXPECT_THROW(InetAddress::getLocalHost(), SystemFailure);
                continue;
            }
            nameService().addresses = {{row.ascii, {"192.0.2.1"}}};
            EXPECT_EQ(InetAddress::getLocalHost().toString(), "192.0.2.1");
        }
    }

    TEST_F(GetLocalHost, nameFailsWithTheCodeOfTheSystem)
    {
        namespace handlers = core::except::tests;
        for (const int code : systemFailures()) {
            machine.nameFailure = {code, std::system_category()};
            const std::string text =
                "Call to GetComputerName failed.: " + std::system_category().message(code);
            EXPECT_EQ(failureOf([] { getLocalHostName(); }),
                      (Failure{typeid(SystemFailure), text}));
            EXPECT_EQ(handlers::handlersThatTake([] { getLocalHostName(); }),
                      handlers::namesForSystemError());
            try {
                getLocalHostName();
            } catch (const std::system_error& failure) {
                EXPECT_EQ(failure.code(), machine.nameFailure);
            }
        }
    }

    // The public lists are those of the platform's table.
    TEST_F(GetLocalHost, adaptersAreListedFromTheTable)
    {
        machine.adapters = {adapter(2, u"bare"), adapter(3, u"eth0", {unicast("10.0.0.3", 8)})};
        EXPECT_EQ(NetworkInterface::listAll().size(), 2U);
        const auto active = NetworkInterface::list();
        ASSERT_EQ(active.size(), 1U);
        EXPECT_EQ(active.begin()->getIdentifier(), "3");
        machine.adaptersFailure = {systemFailures().front(), std::system_category()};
        EXPECT_THROW(NetworkInterface::list(), SystemFailure);
        EXPECT_THROW(NetworkInterface::listAll(), SystemFailure);
    }

} // namespace
} // namespace foundation::network
