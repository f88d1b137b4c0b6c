// On Linux the parser of Boost refuses already what is not strict, so that the second check never
// speaks. Here it is replaced for the whole program.

#include <foundation/network/InetAddress.hpp>

#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "platform/StrictIPv4.hpp"
#include "platform/SystemAnswers.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace foundation::network {

namespace {

    std::vector<std::string> checkedTexts;
    bool takesAll = false;

} // namespace

bool platform::isStrictIPv4(const char* text) noexcept
{
    checkedTexts.emplace_back(text);
    return takesAll;
}

namespace {

    using namespace tests;
    using namespace std::string_literals;

    TEST(InetAddress, refusesVersion4ThatIsNotStrict)
    {
        takesAll = false;
        checkedTexts.clear();
        const auto make = [] { InetAddress address("10.0.0.1"s); };
        EXPECT_EQ(failureOf(make),
                  (Failure{typeid(core::except::AnonymousInternalException<std::invalid_argument>),
                           "Invalid IP address string: 10.0.0.1"}));
        EXPECT_EQ(checkedTexts, std::vector<std::string>{"10.0.0.1"});
        EXPECT_EQ(core::except::tests::handlersThatTake(make),
                  core::except::tests::namesForInvalidArgument());
    }

    TEST(InetAddress, takesVersion4ThatIsStrict)
    {
        takesAll = true;
        EXPECT_EQ(InetAddress("10.0.0.1"s).toString(), "10.0.0.1");
    }

    TEST(InetAddress, checksNothingButVersion4)
    {
        takesAll = false;
        checkedTexts.clear();
        EXPECT_EQ(InetAddress("::ffff:10.0.0.1"s).toString(), "::ffff:10.0.0.1");
        EXPECT_EQ(InetAddress("::"s).toString(), "::");
        EXPECT_EQ(failureOf([] { InetAddress address("name"s); })->text, refusalOf("name"));
        EXPECT_EQ(checkedTexts, std::vector<std::string>());
    }

} // namespace
} // namespace foundation::network
