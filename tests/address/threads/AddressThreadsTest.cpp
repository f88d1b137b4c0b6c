// Meant to run under ThreadSanitizer, which sees a race even when its outcome is right.

#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include "threads/Barrier.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace foundation::network {
namespace {

    constexpr std::size_t threadCount = 6;
    constexpr int rounds = 100;

    // Runs @p isRight on all threads at once, many times each, and counts what was wrong.
    int wrongAnswers(const std::function<bool()>& isRight)
    {
        std::atomic<int> wrong = 0;
        tests::Barrier start(threadCount);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i)
            threads.emplace_back([&] {
                start.arriveAndWait();
                for (int round = 0; round < rounds; ++round)
                    wrong += isRight() ? 0 : 1;
            });
        for (std::thread& thread : threads)
            thread.join();
        return wrong;
    }

    TEST(AddressThreads, shareOneConverter)
    {
        const IdnConverter converter;
        EXPECT_EQ(wrongAnswers([&] {
                      const IdnConverter copy(converter);
                      return converter.toAscii(u"stra\u00DFe.example") == "xn--strae-oqa.example"
                             && copy.toUnicode("xn--strae-oqa.example") == u"stra\u00DFe.example"
                             && copy.toAscii(u"\u03C3\u03C2") == converter.toAscii(u"\u03C3\u03C2")
                             && converter.toAscii(std::u16string(100, u'A'))
                                    == std::string(100, 'a');
                  }),
                  0);
    }

    TEST(AddressThreads, makeConvertersOfTheirOwn)
    {
        EXPECT_EQ(wrongAnswers([] {
                      return idn_to_ascii(u"\u00FC.example") == "xn--tda.example"
                             && ascii_to_idn("xn--tda.example") == u"\u00FC.example";
                  }),
                  0);
    }

    TEST(AddressThreads, shareOneAddress)
    {
        const InetAddress address(std::string("fe80::1%2000000001"));
        const InterfaceAddress interfaceAddress(address, 64);
        EXPECT_EQ(wrongAnswers([&] {
                      const InetAddress copy(address);
                      return copy.toString() == "fe80::1%2000000001" && address.isLinkLocal()
                             && address.bytes().size() == 16
                             && interfaceAddress.toString() == "fe80::1%2000000001/64"
                             && interfaceAddress.getInetAddress().getVersion() == 6;
                  }),
                  0);
    }

    std::string factsOf(const NetworkInterface& adapter)
    {
        std::string facts = adapter.getIdentifier() + " " + adapter.getHardwareAddress().toString();
        for (const InterfaceAddress& address : adapter.getInterfaceAddresses())
            facts += " " + address.toString();
        for (const InetAddress& address : adapter.getInetAddresses())
            facts += " " + address.toString();
        facts += adapter.isUp() ? " up" : "";
        facts += adapter.isLoopback() ? " loopback" : "";
        facts += adapter.supportsMulticast() ? " multicast" : "";
        for (const std::u16string& text : {adapter.getFriendlyName(), adapter.getDescription()})
            facts += " " + std::string(text.begin(), text.end());
        return facts;
    }

    TEST(AddressThreads, shareOneAdapter)
    {
        const auto adapters = NetworkInterface::listAll();
        ASSERT_FALSE(adapters.empty());
        for (const NetworkInterface& adapter : adapters) {
            const std::string facts = factsOf(adapter);
            EXPECT_EQ(wrongAnswers([&] {
                          const NetworkInterface copy(adapter);
                          return factsOf(copy) == facts && factsOf(adapter) == facts;
                      }),
                      0);
        }
    }

    // Each takes a snapshot of its own.
    TEST(AddressThreads, listAdaptersAtTheSameTime)
    {
        std::atomic<int> failures = 0;
        tests::Barrier start(threadCount);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i)
            threads.emplace_back([&] {
                start.arriveAndWait();
                for (int round = 0; round < 5; ++round) {
                    try {
                        if (NetworkInterface::listAll().size() < NetworkInterface::list().size())
                            ++failures;
                    } catch (const std::exception&) {
                        ++failures;
                    }
                }
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(failures, 0);
    }

    // The name service knows the texts of addresses without asking anybody.
    TEST(AddressThreads, lookUpAtTheSameTime)
    {
        EXPECT_EQ(wrongAnswers([] {
                      return InetAddress::getByName("127.0.0.1").toString() == "127.0.0.1"
                             && InetAddress::getAllByName("127.0.0.2").size() == 1;
                  }),
                  0);
    }

} // namespace
} // namespace foundation::network
