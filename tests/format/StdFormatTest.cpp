#include <foundation/network/format/Std.hpp>

#include "FormattingTest.hpp"

TEST(StdFormat, formatsValuesAsTheirTexts)
{
    foundation::network::tests::checkFormatting([](const char* options, const auto& value) {
        return std::vformat(options, std::make_format_args(value));
    });
}

TEST(StdFormat, refusesWhatATextHasNoUseFor)
{
    const foundation::network::IRI iri(std::string("a"));
    EXPECT_THROW(static_cast<void>(std::vformat("{:x}", std::make_format_args(iri))),
                 std::format_error);
}

TEST(StdFormat, formatsWhatIsCheckedWhenItIsCompiled)
{
    const foundation::network::InetAddress address;
    EXPECT_EQ(std::format("{:>8}|{}", address, address), " 0.0.0.0|0.0.0.0");
}
