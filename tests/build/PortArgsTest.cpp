#include <foundation/network/IRIArgs.hpp>

#include "build/BagTesting.hpp"
#include "iri/Expect.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;
    using iri::detail::portStringToNumeric;

    constexpr unsigned short before = 7;

    struct Row {
        std::u32string text;
        bool isPort;
        unsigned short after; ///< in a bag or a variable that held 7
    };

    const Row rows[] = {
        {U"80", true, 80},
        {U"0", true, 0},
        {U"00080", true, 80},
        {U"65535", true, 65535},
        {U"00000000000000000000000000065535", true, 65535},
        {U"0000000000000000000000000000", true, 0},
        {U"", false, before},
        {U"65536", false, before},
        {U"99999", false, before},
        {U"4294967376", false, before},           // 2^32 + 80
        {U"18446744073709551696", false, before}, // 2^64 + 80
        {U"65536x", false, before},
        {U"x80", false, before},
        {U" 80", false, before},
        {U"+80", false, before},
        {U"-1", false, before},
        {U":80", false, before},
        {U"\u0663", false, before},       // an Arabic-Indic digit
        {U"\uFF18\uFF10", false, before}, // full-width digits
        {U"80x", false, 80},              // the digits in front have been taken by then
        {U"8a", false, 8},
        {U"80 ", false, 80},
        {U"0080:", false, 80},
        {U"0x50", false, 0},
        {U"8\u0663", false, 8},
        {U"80.0", false, 80},
        {std::u32string(U"80\0", 3), false, 80},
    };

    std::string narrow(const std::u32string& text)
    {
        IRIArgs args;
        static_cast<Base&>(args).setQuery(text);
        return IRI(args).getQueryUtf8(IRI::Encoding::Decoded);
    }

    std::u16string wide(const std::u32string& text)
    {
        return std::u16string(text.begin(), text.end()); // all are below U+10000
    }

    using Set = std::function<void(IRIArgs&, const std::u32string&)>;

    const std::vector<Set> setters = {
        [](IRIArgs& args, const std::u32string& text) { args.setPort(narrow(text)); },
        [](IRIArgs& args, const std::u32string& text) { args.setPort(wide(text)); },
        [](IRIArgs& args, const std::u32string& text) { static_cast<Base&>(args).setPort(text); },
        [](IRIArgs& args, const std::u32string& text) {
            static_cast<Base&>(args).setPort(narrow(text));
        },
        [](IRIArgs& args, const std::u32string& text) {
            static_cast<Base&>(args).setPort(wide(text));
        },
    };

    std::optional<unsigned> portOf(IRIArgs args)
    {
        const IRI iri(args.setHost("h"));
        if (!iri.hasPort())
            return std::nullopt;
        EXPECT_EQ(iri.getPortUtf8(), std::to_string(iri.getPortNumber()));
        return iri.getPortNumber();
    }

} // namespace

TEST(PortStringToNumeric, takesTheDigitsAtTheFront)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        unsigned short number = before;
        EXPECT_EQ(portStringToNumeric(row.text, number), row.isPort);
        EXPECT_EQ(number, row.after);
    }
}

TEST(PortStringToNumeric, readsEveryPort)
{
    for (unsigned value = 0; value <= 65535 + 1000; ++value) {
        const std::string digits = std::to_string(value);
        unsigned short number = 0;
        const bool isPort =
            portStringToNumeric(std::u32string(digits.begin(), digits.end()), number);
        ASSERT_EQ(isPort, value <= 65535);
        ASSERT_EQ(number, value <= 65535 ? value : 0);
    }
}

TEST(IRIArgs, portsAreTakenAsText)
{
    for (const Row& row : rows)
        for (std::size_t i = 0; i < setters.size(); ++i) {
            SCOPED_TRACE(testing::PrintToString(row.text) + ", setter " + std::to_string(i));
            const Set& set = setters[i];
            IRIArgs present;
            present.setPort(before);
            IRIArgs absent;
            if (row.isPort) {
                set(present, row.text);
                set(absent, row.text);
                EXPECT_EQ(portOf(absent), row.after);
            } else {
                const std::string message = "Port must be numeric";
                EXPECT_TRUE(throwsExactly<LogicFailure>([&] { set(present, row.text); }, message));
                EXPECT_TRUE(throwsExactly<LogicFailure>([&] { set(absent, row.text); }, message));
                EXPECT_EQ(portOf(absent), std::nullopt); // whatever number was written
            }
            EXPECT_EQ(portOf(present), row.after);
        }
}

TEST(IRIArgs, portsAreTakenAsAListOfDigits)
{
    IRIArgs args;
    EXPECT_EQ(&args.setPort({'0', '8', '0'}), &args);
    EXPECT_EQ(portOf(args), 80U);
    EXPECT_TRUE(throwsExactly<LogicFailure>(
        [&] {
            args.setPort({'9', 'x'});
        },
        "Port must be numeric"));
    EXPECT_EQ(portOf(args), 9U);
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { args.setPort(std::initializer_list<char>()); },
                                            "Port must be numeric"));
    EXPECT_TRUE(throwsExactly<AnyFailure>([&] { args.setPort({'8', '\xFF'}); }, invalidUtf8));
    EXPECT_EQ(portOf(args), 9U);
}

TEST(IRIArgs, portsAreTakenAsNumbers)
{
    for (const std::uint16_t number : std::initializer_list<std::uint16_t>{0, 1, 80, 65535}) {
        IRIArgs args;
        EXPECT_EQ(&args.setPort(number), &args);
        EXPECT_EQ(portOf(args), number);
        IRIArgs other;
        static_cast<Base&>(other).setPort(number);
        EXPECT_EQ(portOf(other), number);
    }
}

TEST(IRIArgs, setPortReturnsTheBag)
{
    IRIArgs args;
    EXPECT_EQ(&args.setPort(std::string("1")), &args);
    EXPECT_EQ(&args.setPort(std::u16string(u"1")), &args);
}

TEST(IRIArgs, clearPortMakesThePortAbsent)
{
    IRIArgs args;
    args.setPort(80);
    EXPECT_EQ(&args.clearPort(), &args);
    EXPECT_EQ(portOf(args), std::nullopt);
    args.setPort(80);
    static_cast<Base&>(args).clearPort();
    EXPECT_EQ(portOf(args), std::nullopt);
}

// Here, unlike in the setters of the components, the transcoder's own exception is seen.
TEST(IRIArgs, aPortThatDoesNotConvertChangesNothing)
{
    const std::u16string low = {u'8', 0xDC00};
    const std::u16string high = {u'8', 0xD800};
    const auto misplaced = [](const std::string& unit) {
        return "Misplaced UTF-16 surrogate U+" + unit
               + " encountered while trying to encode UTF-32 sequence";
    };
    for (const std::optional<unsigned short> port :
         {std::optional<unsigned short>(), std::optional<unsigned short>(before)}) {
        IRIArgs args;
        if (port)
            args.setPort(*port);
        Base& base = args;
        EXPECT_TRUE(throwsExactly<AnyFailure>([&] { args.setPort("8\xFF"); }, invalidUtf8));
        EXPECT_TRUE(throwsExactly<AnyFailure>([&] { base.setPort("8\xFF"); }, invalidUtf8));
        EXPECT_TRUE(throwsExactly<RangeFailure>([&] { args.setPort(low); }, misplaced("0xdc00")));
        EXPECT_TRUE(throwsExactly<RangeFailure>([&] { base.setPort(low); }, misplaced("0xdc00")));
        EXPECT_TRUE(throwsExactly<RangeFailure>([&] { args.setPort(high); }, misplaced("0")));
        EXPECT_EQ(portOf(args), port);
    }
}

} // namespace foundation::network
