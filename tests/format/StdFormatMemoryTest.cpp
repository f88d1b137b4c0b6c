#include "FormattingMemory.hpp"

#include <foundation/network/format/Std.hpp>

#include <gtest/gtest.h>

TEST(StdFormatMemory, mayFailWhereverAValueIsFormatted)
{
    foundation::network::tests::checkFormattingMemory([](const char* options, const auto& value) {
        return std::vformat(options, std::make_format_args(value));
    });
}
