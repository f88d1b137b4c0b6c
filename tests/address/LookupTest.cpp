#include <foundation/core/except/Exception.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include "address/InventedNameService.hpp"
#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "platform/SystemAnswers.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <typeinfo>
#include <utility>
#include <vector>

namespace foundation::network {
namespace {

    using namespace tests;
    using Texts = std::vector<std::string>;
    using SystemFailure = core::except::AnonymousInternalException<std::system_error>;

    const char* const FORWARD = " any stream tcp configured";
    const char* const CANONICAL = " any stream tcp canonical";

    class Lookup : public testing::Test {
    protected:
        Lookup() { nameService() = {}; }

        static Texts questions() { return std::exchange(nameService().questions, {}); }
    };

    TEST_F(Lookup, byNameGivesTheFirstAddressAndRemembersTheName)
    {
        nameService().addresses["Host.Example"] = {"192.0.2.7", "2001:db8::7"};
        const InetAddress address = InetAddress::getByName("Host.Example");
        EXPECT_EQ(questions(), Texts{std::string("forward Host.Example") + FORWARD});
        EXPECT_EQ(address.toString(), "192.0.2.7");
        EXPECT_EQ(address.getHostAddress(), "192.0.2.7");
        EXPECT_EQ(address.getHostName(), "Host.Example"); // as it was given
        EXPECT_EQ(questions(), Texts{});
    }

    TEST_F(Lookup, allByNameGivesEveryAddressInOrder)
    {
        // Neither sorted, nor grouped by version, nor rid of duplicates.
        const Texts texts = {"2001:db8::7", "192.0.2.9", "192.0.2.7", "::1", "192.0.2.9"};
        nameService().addresses["host"] = texts;
        const auto addresses = InetAddress::getAllByName("host");
        EXPECT_EQ(questions(), Texts{std::string("forward host") + FORWARD});
        Texts found, names;
        for (const InetAddress& address : addresses) {
            found.push_back(address.toString());
            names.push_back(address.getHostName());
        }
        EXPECT_EQ(found, texts);
        EXPECT_EQ(names, Texts(texts.size(), "host"));
        EXPECT_EQ(questions(), Texts{});
        EXPECT_EQ(InetAddress::getByName("host").toString(), texts.front());
    }

    TEST_F(Lookup, keepsTheScopeThatTheNameServiceGives)
    {
        nameService().addresses["link"] = {"fe80::1%2000000001"};
        EXPECT_EQ(InetAddress::getByName("link").toString(), "fe80::1%2000000001");
        const auto addresses = InetAddress::getAllByName("link");
        EXPECT_EQ(addresses.begin()->toString(), "fe80::1%2000000001");
        EXPECT_EQ(addresses.begin()->bytes().size(), 16U);
    }

    TEST_F(Lookup, namesGoToTheNameServiceAsTheyAre)
    {
        for (const std::string& name :
             {std::string("a b"),
              std::string("stra\xC3\x9F"
                          "e"),
              std::string("\xFF"), std::string("192.0.2.1"), std::string("127.1"),
              std::string(5000, 'a'), std::string("xn--a.")}) {
            EXPECT_THROW(InetAddress::getByName(name), SystemFailure);
            EXPECT_THROW(InetAddress::getAllByName(name), SystemFailure);
            const std::string question = "forward " + name + FORWARD;
            EXPECT_EQ(questions(), (Texts{question, question}));
        }
    }

    // It does not mean this machine.
    TEST_F(Lookup, anEmptyNameIsRefused)
    {
        EXPECT_THROW(InetAddress::getByName(""), SystemFailure);
        EXPECT_THROW(InetAddress::getAllByName(""), SystemFailure);
        const std::string question = std::string("forward nothing") + FORWARD;
        EXPECT_EQ(questions(), (Texts{question, question}));
    }

    TEST_F(Lookup, hostNameOfAnAddressIsAskedForEachTime)
    {
        nameService().names["192.0.2.7"] = "seven.example";
        const InetAddress address(std::string("192.0.2.7"));
        EXPECT_EQ(address.getHostName(), "seven.example");
        EXPECT_EQ(questions(), Texts{"reverse 192.0.2.7"});
        nameService().names["192.0.2.7"] = "other.example";
        EXPECT_EQ(address.getHostName(), "other.example");
        EXPECT_EQ(questions(), Texts{"reverse 192.0.2.7"});
        EXPECT_EQ(address.toString(), "192.0.2.7");
    }

    TEST_F(Lookup, hostNameOfAnAddressWithoutOneIsItsText)
    {
        for (const char* text : {"192.0.2.8", "2001:db8::8", "fe80::1%2000000001"}) {
            EXPECT_EQ(InetAddress(std::string(text)).getHostName(), text);
            EXPECT_EQ(questions(), Texts{std::string("reverse ") + text});
        }
    }

    TEST_F(Lookup, copiesKeepTheNameAndWhatIsMadeOfThemDoesNot)
    {
        nameService().addresses["host"] = {"192.0.2.7"};
        nameService().names["192.0.2.7"] = "seven.example";
        const InetAddress address = InetAddress::getByName("host");
        const InetAddress copy(address); // NOLINT(performance-unnecessary-copy-initialization)
        InetAddress assigned;
        assigned = address;
        InetAddress moved(std::move(assigned));
        EXPECT_EQ(copy.getHostName(), "host");
        EXPECT_EQ(moved.getHostName(), "host");

        const InterfaceAddress interfaceAddress(address, 24);
        EXPECT_EQ(interfaceAddress.toString(), "192.0.2.7/24");
        questions();
        EXPECT_EQ(interfaceAddress.getInetAddress().getHostName(), "seven.example");
        EXPECT_EQ(questions(), Texts{"reverse 192.0.2.7"});
        EXPECT_EQ(InetAddress(address.bytes()).getHostName(), "seven.example");
    }

    TEST_F(Lookup, canonicalNameStartsFromTheAddress)
    {
        nameService().addresses["alias"] = {"192.0.2.7"};
        nameService().addresses["seven.example"] = {"192.0.2.99"};
        nameService().names["192.0.2.7"] = "seven.example";
        nameService().canonicalNames["alias"] = "wrong.example";
        nameService().canonicalNames["seven.example"] = "canonical.example";
        const InetAddress address = InetAddress::getByName("alias");
        questions();
        EXPECT_EQ(address.getCanonicalHostName(), "canonical.example");
        EXPECT_EQ(questions(),
                  (Texts{"reverse 192.0.2.7", std::string("forward seven.example") + CANONICAL}));
        EXPECT_EQ(address.getHostName(), "alias");
    }

    TEST_F(Lookup, canonicalNameIsTheNameOfTheAddressWhereNoOtherIsGiven)
    {
        nameService().addresses["seven.example"] = {"192.0.2.7"};
        nameService().names["192.0.2.7"] = "seven.example";
        EXPECT_EQ(InetAddress(std::string("192.0.2.7")).getCanonicalHostName(), "seven.example");
    }

    void expectFailure(const NameServiceFailure& row, const std::function<void()>& operation)
    {
        try {
            operation();
            ADD_FAILURE() << "threw nothing";
        } catch (const std::system_error& failure) {
            EXPECT_EQ(typeid(failure), typeid(SystemFailure));
            EXPECT_EQ(failure.what(), row.text); // the text of the code with nothing added
            EXPECT_EQ(failure.code().value(), row.value);
            EXPECT_EQ(failure.code().category().name(), row.category);
            EXPECT_EQ(failure.code().category() == std::system_category(),
                      row.category == "system");
        }
    }

    TEST_F(Lookup, failuresOfAForwardLookupKeepTheirCode)
    {
        nameService().names["192.0.2.7"] = "seven.example";
        for (const NameServiceFailure& row : nameServiceFailures()) {
            SCOPED_TRACE(row.text + " " + std::to_string(row.answer));
            nameService().forwardFailure = row.answer;
            nameService().systemFailure = row.systemFailure;
            expectFailure(row, [] { InetAddress::getByName("host"); });
            expectFailure(row, [] { InetAddress::getAllByName("host"); });
            expectFailure(row,
                          [] { InetAddress(std::string("192.0.2.7")).getCanonicalHostName(); });
        }
    }

    // The name service says that it failed, and the system that nothing did.
    TEST_F(Lookup, failureOfAForwardLookupWithoutAnyCodeIsOneForGood)
    {
        nameService().names["192.0.2.7"] = "seven.example";
        for (const NameServiceFailure& row : failuresWithoutCode()) {
            SCOPED_TRACE(row.answer);
            nameService().forwardFailure = row.answer;
            expectFailure(row, [] { InetAddress::getByName("host"); });
            expectFailure(row, [] { InetAddress::getAllByName("host"); });
            expectFailure(row,
                          [] { InetAddress(std::string("192.0.2.7")).getCanonicalHostName(); });
        }
    }

    TEST_F(Lookup, failuresOfAReverseLookupKeepTheirCode)
    {
        const InetAddress address(std::string("192.0.2.7"));
        for (const NameServiceFailure& row : nameServiceFailures()) {
            SCOPED_TRACE(row.text + " " + std::to_string(row.answer));
            nameService().reverseFailure = row.answer;
            nameService().systemFailure = row.systemFailure;
            expectFailure(row, [&] { address.getHostName(); });
            // A service that has no name must not be the reason.
            EXPECT_EQ(questions(),
                      (Texts{"reverse 192.0.2.7", "reverse 192.0.2.7 numeric service"}));
            expectFailure(row, [&] { address.getCanonicalHostName(); });
            questions();
        }
    }

    // The buffers for the answer are as they were then, and nothing of them is one.
    TEST_F(Lookup, failureOfAReverseLookupWithoutAnyCodeIsOneForGood)
    {
        const InetAddress address(std::string("192.0.2.7"));
        nameService().names["192.0.2.7"] = "seven.example";
        EXPECT_EQ(address.getHostName(), "seven.example");
        for (const NameServiceFailure& row : failuresWithoutCode()) {
            SCOPED_TRACE(row.answer);
            nameService().reverseFailure = row.answer;
            expectFailure(row, [&] { address.getHostName(); });
            expectFailure(row, [&] { address.getCanonicalHostName(); });
        }
    }

    // Boost could not even begin, and nothing was asked.
    TEST_F(Lookup, failureToGetReadyToAskKeepsItsCode)
    {
        nameService().addresses["host"] = {"192.0.2.7"};
        for (const int code : systemFailures()) {
            nameService().setUpFailure = code;
            for (const std::function<void()>& operation :
                 {std::function<void()>([] { InetAddress::getByName("host"); }),
                  std::function<void()>([] { InetAddress::getAllByName("host"); })}) {
                try {
                    operation();
                    ADD_FAILURE() << "threw nothing";
                } catch (const SystemFailure& failure) {
                    EXPECT_EQ(failure.code(), std::error_code(code, std::system_category()));
                }
            }
            EXPECT_EQ(questions(), Texts{});
        }
        nameService().setUpFailure = 0;
        EXPECT_EQ(InetAddress::getByName("host").toString(), "192.0.2.7");
    }

    TEST_F(Lookup, failureIsTakenByEachOfItsHandlers)
    {
        namespace handlers = core::except::tests;
        const auto forward = [] { InetAddress::getByName("unknown"); };
        EXPECT_EQ(handlers::handlersThatTake(forward), handlers::namesForSystemError());
        nameService().reverseFailure = temporaryFailure().answer;
        const auto reverse = [] { InetAddress().getHostName(); };
        EXPECT_EQ(handlers::handlersThatTake(reverse), handlers::namesForSystemError());
    }

    TEST_F(Lookup, cloneOfAFailureKeepsItsCodeAndItsType)
    {
        try {
            InetAddress::getByName("unknown");
            FAIL() << "threw nothing";
        } catch (const boost::exception_detail::clone_base& failure) {
            const std::unique_ptr<const boost::exception_detail::clone_base> clone(failure.clone());
            expectFailure(nameServiceFailures().front(), [&] { clone->rethrow(); });
        }
    }

    // After a failure nothing is left behind: the next question is answered.
    TEST_F(Lookup, canBeRepeatedAfterAFailure)
    {
        nameService().forwardFailure = temporaryFailure().answer;
        EXPECT_THROW(InetAddress::getByName("host"), SystemFailure);
        nameService().forwardFailure = 0;
        nameService().addresses["host"] = {"192.0.2.7"};
        EXPECT_EQ(InetAddress::getByName("host").toString(), "192.0.2.7");
    }

} // namespace
} // namespace foundation::network
