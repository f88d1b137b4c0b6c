#include <foundation/network/format/Fmt.hpp>

// A hardware address is a range, and this brings a formatter for ranges, which must not take it.
#include <fmt/ranges.h>

#include "FormattingTest.hpp"

TEST(Fmt, formatsValuesAsTheirTexts)
{
    foundation::network::tests::checkFormatting([](const char* options, const auto& value) {
        return fmt::format(fmt::runtime(options), value);
    });
}

TEST(Fmt, refusesWhatATextHasNoUseFor)
{
    const foundation::network::IRI iri(std::string("a"));
    EXPECT_THROW(static_cast<void>(fmt::format(fmt::runtime("{:x}"), iri)), fmt::format_error);
    EXPECT_THROW(static_cast<void>(fmt::format(fmt::runtime("{:+}"), iri)), fmt::format_error);
}

TEST(Fmt, formatsWhatIsCheckedWhenItIsCompiled)
{
    const foundation::network::InetAddress address;
    EXPECT_EQ(fmt::format("{:>8}|{}", address, address), " 0.0.0.0|0.0.0.0");
}
